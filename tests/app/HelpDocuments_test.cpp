// SPDX-License-Identifier: GPL-3.0-or-later
// The help documents against their sources and against the program that they explain.
#include "app/help_documents.h"
#include "export/transect_file.h"
#include "richtext/RichTextReader.h"
#include "support/ProgramTexts.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

const QString kSources = QStringLiteral(TESSEL_SOURCE_DIR "/docs/help");
const QString kDocuments = QStringLiteral(TESSEL_SOURCE_DIR "/helpdocs");

struct SourceLine {
    QString text;
    bool code = false;  // stands in a fence
};

QList<SourceLine> sourceLines(int number) {
    const std::string path = (kSources + u"/hdoc%1.md"_s.arg(number)).toStdString();
    QList<SourceLine> lines;
    bool code = false;
    for (const QString& line : QString::fromStdString(readFile(path)).split(u'\n'))
        if (line.startsWith("```"_L1))
            code = !code;
        else
            lines << SourceLine{line, code};
    return lines;
}

// What a reader sees of a line: without the marks of headings, tables, bold and code, and without list marks.
// A picture is one character.
QString seen(SourceLine line) {
    if (line.code) return line.text;
    static const QRegularExpression kRuler(u"^\\|[-:|]+\\|$"_s);
    static const QRegularExpression kMark(u"^(#+|-|[0-9]+\\.) "_s);
    static const QRegularExpression kPicture(u"^!\\[\\]\\(pictures/.*\\.png\\)\\{width=[0-9.]+in\\}$"_s);
    if (kRuler.match(line.text).hasMatch()) return {};
    if (kPicture.match(line.text).hasMatch()) return QChar(QChar::ObjectReplacementCharacter);
    if (line.text.startsWith(u'|')) line.text.replace(u'|', u' ');
    return line.text.remove(kMark).remove(u"**"_s).remove(u'`');
}

QStringList words(const QString& text) {
    return text.simplified().split(u' ', Qt::SkipEmptyParts);
}

QStringList wordsOfSource(int number) {
    QStringList all;
    for (const SourceLine& line : sourceLines(number))
        all << words(seen(line));
    return all;
}

std::unique_ptr<QTextDocument> document(int number) {
    auto shown = std::make_unique<QTextDocument>();
    const std::string bytes = readFile((kDocuments + u"/hdoc%1.rtf"_s.arg(number)).toStdString());
    EXPECT_EQ(readRichText(QByteArrayView(bytes.data(), qsizetype(bytes.size())), *shown),
              RichTextResult::kRichText)
        << number;
    return shown;
}

// The words of the document's paragraphs and cells in their order; the mark of a list item is not one.
QStringList wordsOfDocument(const QTextDocument& shown) {
    static const QRegularExpression kMark(u"^\\s*(\x2022|[0-9]+\\.)(\\s|$)"_s);
    QStringList all;
    for (QTextBlock block = shown.begin(); block.isValid(); block = block.next())
        all << words(block.text().remove(kMark));
    return all;
}

QStringList quotedTexts(int number) {
    QStringList quoted;
    for (const SourceLine& line : sourceLines(number)) {
        if (line.code) continue;
        const QStringList parts = line.text.split(u'"');
        EXPECT_EQ(parts.size() % 2, 1) << number << ": a quote stays open: " << line.text.toStdString();
        for (qsizetype i = 1; i < parts.size(); i += 2)
            quoted << parts[i];
    }
    return quoted;
}

// The record formats of the export, which the program puts together.
QSet<QString> recordFormats() {
    QSet<QString> formats;
    for (const bool siteIDs : {false, true})
        for (const bool two : {false, true})
            for (const bool rows : {false, true})
                formats << QString::fromStdString(recordFormat(siteIDs, two, rows));
    return formats;
}

class HelpDocument : public testing::TestWithParam<int> {};

TEST_P(HelpDocument, ShowsEveryWordOfItsSourceInOrder) {
    const QStringList source = wordsOfSource(GetParam());
    const QStringList shown = wordsOfDocument(*document(GetParam()));
    ASSERT_GT(source.size(), 400);
    for (qsizetype i = 0; i < std::min(source.size(), shown.size()); ++i)
        ASSERT_EQ(shown[i], source[i])
            << "word " << i << " after "
            << shown.mid(std::max<qsizetype>(i - 8, 0), 8).join(u' ').toStdString();
    EXPECT_EQ(shown.size(), source.size());
}

TEST_P(HelpDocument, KeepsItsTables) {
    static const QRegularExpression kHead(u"^\\|[-:|]+\\|$"_s);
    qsizetype tables = 0;
    for (const SourceLine& line : sourceLines(GetParam()))
        tables += !line.code && kHead.match(line.text).hasMatch();
    const auto shown = document(GetParam());
    QSet<QTextTable*> found;
    for (QTextBlock block = shown->begin(); block.isValid(); block = block.next())
        if (QTextTable* table = QTextCursor(block).currentTable()) found << table;
    EXPECT_EQ(found.size(), tables);
}

TEST_P(HelpDocument, QuotesOnlyTextsOfTheProgram) {
    static const QSet<QString> texts =
        programTexts(QStringLiteral(TESSEL_SOURCE_DIR "/src")) | recordFormats();
    ASSERT_GT(texts.size(), 300);
    const QStringList quoted = quotedTexts(GetParam());
    ASSERT_FALSE(quoted.isEmpty());
    for (const QString& text : quoted)
        EXPECT_TRUE(texts.contains(text.trimmed())) << GetParam() << " quotes: " << text.toStdString();
}

TEST_P(HelpDocument, KeepsTheBlanksInsideQuotes) {
    const QString shown = document(GetParam())->toPlainText();
    for (const QString& text : quotedTexts(GetParam()))
        EXPECT_TRUE(shown.contains(u'"' + text + u'"')) << text.toStdString();
}

TEST_P(HelpDocument, IsPlainAsciiAndHasATitle) {
    const QList<SourceLine> lines = sourceLines(GetParam());
    EXPECT_TRUE(lines[0].text.startsWith("# "_L1));
    for (const SourceLine& line : lines)
        for (const QChar c : line.text)
            EXPECT_TRUE(c.unicode() < 128) << line.text.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Number, HelpDocument, testing::ValuesIn([] {
                             std::vector<int> numbers;
                             for (const auto& document : kHelpDocuments)
                                 numbers.push_back(document.number);
                             return numbers;
                         }()));

TEST(HelpDocuments, AreThoseOfTheList) {
    constexpr auto kCount = static_cast<qsizetype>(kHelpDocuments.size());
    EXPECT_EQ(QDir(kDocuments).entryList(QDir::Files).size(), kCount);
    EXPECT_EQ(QDir(kSources).entryList({u"hdoc*.md"_s}, QDir::Files).size(), kCount);
}

TEST(HelpDocuments, StandUnderTheirTitlesInTheViewersList) {
    for (const auto& document : kHelpDocuments)
        EXPECT_EQ(sourceLines(document.number)[0].text.toStdString(), "# " + std::string(document.title));
}

TEST(HelpDocuments, HaveOneChapterEachForWhatGoesWrongInTheField) {
    for (const QString& title : {u"## The logger that never stopped"_s, u"## Positions in degrees"_s,
                                 u"## Metal under the field"_s}) {
        int found = 0;
        for (const auto& document : kHelpDocuments)
            for (const SourceLine& line : sourceLines(document.number))
                found += line.text == title ? 1 : 0;
        EXPECT_EQ(found, 1) << title.toStdString();
    }
}

TEST(HelpDocuments, AreQuotedFromTheProgramPieceByPiece) {
    const TemporaryFolder folder;
    writeFile(folder / "one.cpp", R"(#include "left out.h"
// "a comment" and 'x'
const char* a = "first line\n" // "between"
    "second \"line\"";
QString b = u"%1 of  %2 sites"_s.arg('"'); /* "more" */ auto c = "Ro&ws";)");
    writeFile(folder / "two.ui", "<ui><string>E&amp;xit</string><string>Size:  </string></ui>");
    EXPECT_EQ(programTexts(QString::fromStdString(folder.path())),
              (QSet<QString>{u"first line"_s, u"second \"line\""_s, u"of"_s, u"sites"_s, u"Rows"_s, u"Exit"_s,
                             u"Size:"_s}));
}

}  // namespace

}  // namespace tessel
