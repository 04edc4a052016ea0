// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/RichTextParser.h"

#include "richtext/RichTextFormats.h"
#include "richtext/RichTextHeader.h"
#include "richtext/RichTextPicture.h"
#include "richtext/RichTextWriter.h"
#include "richtext/rich_text_purpose.h"

#include <QTextDocument>

#include <algorithm>
#include <utility>
#include <vector>

namespace tessel {

namespace {

using Purpose = RichTextPurpose;

// Deeper groups count as part of the group at this depth. Word processors stay below 50.
constexpr std::size_t kDeepest = 500;
constexpr int kMostStandIns = 16;  // characters that stand in for one Unicode character
constexpr int kWidestPaper = 31680;

// Halves of characters whose other half is missing are replaced.
QString wellFormed(QString text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!text[i].isSurrogate()) continue;
        const bool pair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (pair)
            ++i;
        else
            text[i] = QChar::ReplacementCharacter;
    }
    return text;
}

void setTabDistance(QTextDocument& document, int twips) {
    constexpr int kNarrowest = 100;
    auto option = document.defaultTextOption();
    option.setTabStopDistance(pixels(std::max(twips, kNarrowest)));
    document.setDefaultTextOption(option);
}

struct Group {
    Purpose purpose = Purpose::kBody;
    bool optional = false;  // begins with \*: skipped unless its word is known
    int unicodeSkip = 1;    // how many characters stand in for each Unicode character
    RichTextCharacters characters;
    RichTextParagraph paragraph;
};

class Reader {
  public:
    Reader(std::string_view rtf, QTextDocument& document)
        : tokens_(rtf), document_(document), writer_(document) {}
    bool read();

  private:
    void take(const RichTextToken& token);
    void openGroup();
    void closeGroup();
    void enter(Purpose purpose);
    void takeWord(const RichTextToken& token);
    void takeSymbol(char symbol);
    void takeBytes(std::string_view bytes);
    void takeBodyWord(const RichTextToken& token);
    void takePictureWord(const RichTextToken& token);
    bool applyStructure(const RichTextToken& token);
    void applyDocument(const RichTextToken& token);
    bool standsIn(char16_t character);
    void appendBytes(std::string_view bytes);
    void appendUnicode(int number);
    void append(char16_t unit);
    void appendPicture();
    void flush();
    void endParagraph();
    void endCell();
    void endRow();

    Group& group() { return groups_.back(); }

    RichTextTokens tokens_;
    QTextDocument& document_;
    RichTextWriter writer_;
    RichTextTables tables_;
    RichTextHeader header_{tables_};
    RichTextPicture picture_;
    RichTextRowDefinition row_;
    std::vector<Group> groups_{1};
    std::size_t tooDeep_ = 0;
    int toSkip_ = 0;  // characters that only stand in for the Unicode character before them
    QString run_;     // text in one format, not yet handed on
    RichTextCharacters runCharacters_;
    RichTextParagraph lastParagraph_;  // that of the text taken last
    int paperWidth_ = 12240, leftMargin_ = 1800, rightMargin_ = 1800;
};

bool Reader::read() {
    for (auto token = tokens_.next(); token.kind != RichTextToken::kEnd && !writer_.isTooLarge();
         token = tokens_.next())
        take(token);
    flush();
    writer_.finish(blockFormat(lastParagraph_));
    return !writer_.isTooLarge();
}

void Reader::take(const RichTextToken& token) {
    switch (token.kind) {
        case RichTextToken::kOpen:
            return openGroup();
        case RichTextToken::kClose:
            return closeGroup();
        case RichTextToken::kWord:
            return takeWord(token);
        case RichTextToken::kSymbol:
            return takeSymbol(token.text.front());
        case RichTextToken::kByte: {
            const char byte = static_cast<char>(token.number);
            return takeBytes({&byte, 1});
        }
        case RichTextToken::kText:
            return takeBytes(token.text);
        case RichTextToken::kBinary:
            if (group().purpose == Purpose::kPicture) picture_.addBytes(token.text);
            return;
        case RichTextToken::kEnd:
            return;
    }
}

void Reader::openGroup() {
    toSkip_ = 0;
    if (groups_.size() >= kDeepest) {
        ++tooDeep_;
        return;
    }
    groups_.push_back(Group(group()));
    group().optional = false;
}

void Reader::closeGroup() {
    toSkip_ = 0;
    if (tooDeep_ > 0) {
        --tooDeep_;
        return;
    }
    // One end too many is damage: what follows is read as if it had not been there.
    if (groups_.size() == 1) return;
    const Purpose closed = group().purpose;
    groups_.pop_back();
    if (closed == Purpose::kPicture && group().purpose != Purpose::kPicture) appendPicture();
}

void Reader::enter(Purpose purpose) {
    // What stands within a part that is no text is no text either.
    if (group().purpose == Purpose::kSkipped) return;
    group().purpose = purpose;
    if (purpose == Purpose::kPicture) picture_.begin();
}

void Reader::takeWord(const RichTextToken& token) {
    const bool optional = std::exchange(group().optional, false);
    if (const auto purpose = purposeOfWord(token.text)) return enter(*purpose);
    if (optional) return enter(Purpose::kSkipped);
    if (endsDamagedTable(group().purpose, token.text)) group().purpose = Purpose::kBody;
    switch (group().purpose) {
        case Purpose::kBody:
            return takeBodyWord(token);
        case Purpose::kFonts:
            return header_.takeFontWord(token);
        case Purpose::kColours:
            return header_.takeColourWord(token);
        case Purpose::kPicture:
            return takePictureWord(token);
        case Purpose::kStyles:
        case Purpose::kSkipped:
            return;
    }
}

void Reader::takeBodyWord(const RichTextToken& token) {
    const char16_t character = characterOfWord(token.text);
    if (character != 0) {
        if (!standsIn(character)) append(character);
        return;
    }
    toSkip_ = 0;
    if (token.text == "u")
        appendUnicode(token.number);
    else if (!apply(token, group().characters) && !apply(token, group().paragraph) && !row_.apply(token) &&
             !applyStructure(token))
        applyDocument(token);
}

bool Reader::applyStructure(const RichTextToken& token) {
    const auto word = token.text;
    if (word == "par" || word == "nestcell" || (word == "sect" && (!run_.isEmpty() || writer_.hasText())))
        endParagraph();
    else if (word == "cell")
        endCell();
    else if (word == "row")
        endRow();
    else if (word == "uc")
        group().unicodeSkip = std::clamp(token.number, 0, kMostStandIns);
    else
        return false;
    return true;
}

void Reader::applyDocument(const RichTextToken& token) {
    const auto word = token.text;
    const int length = std::clamp(token.number, 0, kWidestPaper);
    if (word == "deff") tables_.defaultFont = token.number;
    if (word == "ansicpg") tables_.codePage = codePageOfNumber(token.number);
    if (word == "deftab") setTabDistance(document_, length);
    if (word == "paperw") paperWidth_ = length;
    if (word == "margl") leftMargin_ = length;
    if (word == "margr") rightMargin_ = length;
}

void Reader::takePictureWord(const RichTextToken& token) {
    const auto word = token.text;
    if (word == "pngblip" || word == "jpegblip") picture_.setKnown();
    if (word == "picwgoal") picture_.setWidth(token.number);
    if (word == "pichgoal") picture_.setHeight(token.number);
    if (word == "picscalex") picture_.setWidthScale(token.number);
    if (word == "picscaley") picture_.setHeightScale(token.number);
}

void Reader::takeSymbol(char symbol) {
    if (symbol == '*') {
        group().optional = true;
        return;
    }
    const char16_t character = characterOfSymbol(symbol);
    if (group().purpose == Purpose::kBody && character != 0 && !standsIn(character)) append(character);
}

void Reader::takeBytes(std::string_view bytes) {
    switch (group().purpose) {
        case Purpose::kBody:
            return appendBytes(bytes);
        case Purpose::kPicture:
            return picture_.addHexadecimal(bytes);
        case Purpose::kFonts:
            return header_.takeFontBytes(bytes);
        case Purpose::kColours:
            return header_.takeColourBytes(bytes);
        case Purpose::kStyles:
        case Purpose::kSkipped:
            return;
    }
}

// Whether the character stands in for the Unicode character before it and is passed over. A tab or the end
// of a line never does.
bool Reader::standsIn(char16_t character) {
    if (character == u'\t' || character == QChar::LineSeparator) toSkip_ = 0;
    return toSkip_ > 0 && toSkip_-- > 0;
}

void Reader::appendBytes(std::string_view bytes) {
    const auto skipped = std::min(bytes.size(), static_cast<std::size_t>(toSkip_));
    toSkip_ -= static_cast<int>(skipped);
    const CodePage codePage = tables_.codePageOf(group().characters);
    for (const char byte : bytes.substr(skipped))
        append(decode(codePage, static_cast<unsigned char>(byte)));
}

void Reader::appendUnicode(int number) {
    constexpr int kPrivate = 0xF000;
    const auto unit = static_cast<char16_t>(number & 0xFFFF);
    const CodePage codePage = tables_.codePageOf(group().characters);
    // Fonts of symbols have their signs in the private area too.
    if ((unit & 0xFF00) == kPrivate)
        append(decode(isPictorial(codePage) ? codePage : CodePage::kSymbol,
                      static_cast<unsigned char>(unit & 0xFF)));
    else
        append(unit);
    toSkip_ = group().unicodeSkip;
}

void Reader::append(char16_t unit) {
    const char16_t character = showable(unit);
    if (group().characters.hidden || character == 0) return;
    if (!run_.isEmpty() && !(runCharacters_ == group().characters)) flush();
    if (run_.isEmpty()) {
        runCharacters_ = group().characters;
        lastParagraph_ = group().paragraph;
    }
    run_ += QChar(character);
}

void Reader::appendPicture() {
    const QImage image = picture_.decoded();
    if (image.isNull() || group().purpose != Purpose::kBody) return;
    flush();
    lastParagraph_ = group().paragraph;
    writer_.appendPicture(image, picture_.shownSize(image));
}

void Reader::flush() {
    if (!run_.isEmpty()) writer_.appendText(wellFormed(run_), tables_.format(runCharacters_));
    run_.clear();
}

void Reader::endParagraph() {
    flush();
    writer_.endParagraph(blockFormat(group().paragraph), tables_.format(group().characters),
                         group().paragraph.inTable);
}

void Reader::endCell() {
    flush();
    writer_.endCell(blockFormat(group().paragraph), tables_.format(group().characters));
}

void Reader::endRow() {
    flush();
    writer_.setTextWidth(paperWidth_ - leftMargin_ - rightMargin_);
    QList<QColor> grounds;
    for (const auto& column : row_.row().columns)
        grounds << tables_.colour(column.background);
    writer_.endRow(row_.row(), grounds);
}

}  // namespace

bool parseRichText(std::string_view rtf, QTextDocument& document) {
    return Reader(rtf, document).read();
}

}  // namespace tessel
