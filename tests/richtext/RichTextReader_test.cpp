// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/RichTextReader.h"

#include "support/temporary_folder.h"

namespace tessel {

namespace {

QByteArray sample(const char* name) {
    const auto path = std::string(TESSEL_SOURCE_DIR) + "/tests/richtext/data/" + name;
    return QByteArray::fromStdString(readFile(path));
}

// A document with the fonts and colours that the cases below refer to.
QByteArray page(const QByteArray& body) {
    return "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss Helvetica;}{\\f1\\fmodern Courier;}"
           "{\\f2\\fnil\\fcharset204 Arial Cyr;}{\\f3\\froman\\fcharset2 Symbol;}{\\f4\\fnil\\fcharset2 "
           "Wingdings;}}"
           "{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue255;\\red255\\green255\\blue0;}" +
           body + "}";
}

class RichTextReader : public testing::Test {
  protected:
    // The text with a line for each block; a table's cells are blocks too.
    QString text(const QByteArray& rtf) {
        isRichText_ = readRichText(rtf, document_) == RichTextResult::kRichText;
        return document_.toPlainText();
    }
    QString bodyText(const QByteArray& body) { return text(page(body)); }

    QTextBlock block(int number) const { return document_.findBlockByNumber(number); }

    QTextCursor find(const QString& word) const {
        const QTextCursor found = document_.find(word, 0, QTextDocument::FindCaseSensitively);
        EXPECT_FALSE(found.isNull()) << word.toStdString();
        return found;
    }
    QTextCharFormat formatOf(const QString& word) const { return find(word).charFormat(); }
    QTextBlock blockOf(const QString& word) const { return find(word).block(); }
    QList<QTextTable*> tables() const {
        QList<QTextTable*> all;
        for (QTextFrame* frame : document_.rootFrame()->childFrames())
            if (auto* table = qobject_cast<QTextTable*>(frame)) all << table;
        return all;
    }
    static QString cellText(const QTextTable* table, int row, int column) {
        const auto cell = table->cellAt(row, column);
        QTextCursor cursor = cell.firstCursorPosition();
        cursor.setPosition(cell.lastCursorPosition().position(), QTextCursor::KeepAnchor);
        return cursor.selectedText().replace(QChar(QChar::ParagraphSeparator), u'\n');
    }
    QImage onlyPicture() const {
        return document_.resource(QTextDocument::ImageResource, QUrl(u"picture:1"_s)).value<QImage>();
    }

    QTextDocument document_;
    bool isRichText_ = false;
};

QByteArray pictureBytes(const char* format) {
    QImage image(6, 3, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    EXPECT_TRUE(image.save(&buffer, format));
    return bytes;
}

}  // namespace

TEST_F(RichTextReader, ShowsWhatPandocWrote) {
    const QString shown = text(sample("written_by_pandoc.rtf"));
    EXPECT_TRUE(isRichText_);
    EXPECT_TRUE(shown.startsWith(
        u"What this is\n\nFirst heading\nSome italic and bold text, code, a link, struck, "
        u"x2 and H2O. \u00DCn\u00EFcode \u201Cquotes\u201D \u2013 dash \u20AC \u0416.\nLists\n"
        u"\u2022\tone\n\u2022\ttwo has"_s))
        << shown.toStdString();
    EXPECT_EQ(block(0).blockFormat().alignment(), Qt::AlignHCenter);
    EXPECT_TRUE(formatOf(u"italic"_s).fontItalic());
    EXPECT_EQ(formatOf(u"bold"_s).fontWeight(), QFont::Bold);
    EXPECT_TRUE(formatOf(u"struck"_s).fontStrikeOut());
    EXPECT_EQ(formatOf(u"code"_s).fontFamilies().toStringList().value(0), u"Courier"_s);
    EXPECT_TRUE(shown.contains(u"code block\u2028  two"_s) || shown.contains(u"code block\n  two"_s));
}

TEST_F(RichTextReader, ShowsPandocsTablesWithoutItsEmptyLines) {
    text(sample("written_by_pandoc.rtf"));
    ASSERT_EQ(tables().size(), 1);
    const QTextTable* table = tables().constFirst();
    ASSERT_EQ(table->rows(), 3);
    ASSERT_EQ(table->columns(), 2);
    EXPECT_EQ(cellText(table, 0, 0), u"Control"_s);
    EXPECT_EQ(cellText(table, 1, 1), u"does it"_s);
    EXPECT_EQ(cellText(table, 2, 1), u"2"_s);
    EXPECT_EQ(table->cellAt(0, 1).firstCursorPosition().blockFormat().alignment(), Qt::AlignRight);
    EXPECT_EQ(table->cellAt(0, 0).format().toTableCellFormat().bottomBorder(), 1);
    EXPECT_EQ(table->cellAt(1, 0).format().toTableCellFormat().bottomBorder(), 0);
}

TEST_F(RichTextReader, ShowsWhatLibreOfficeWriterWrote) {
    const QString shown = text(sample("written_by_libreoffice_writer.rtf"));
    EXPECT_TRUE(
        shown.startsWith(u"Survey rows\nSome bold and italic and under \u0416\u0443\u043A \u201Cq\u201D "
                         u"\u20AC \U0001D6FC link, x2, H2O.\n\u2022\tfirst item\n\u2022\tnested\n"_s))
        << shown.toStdString();
    EXPECT_EQ(formatOf(u"Survey"_s).fontPointSize(), 24);
    EXPECT_TRUE(formatOf(u"under"_s).fontUnderline());
    EXPECT_EQ(formatOf(u"2, H"_s).verticalAlignment(), QTextCharFormat::AlignNormal);
    ASSERT_EQ(tables().size(), 1);
    EXPECT_EQ(cellText(tables()[0], 1, 1), u"accepts all"_s);
    EXPECT_EQ(blockOf(u"centred"_s).blockFormat().alignment(), Qt::AlignHCenter);
}

TEST_F(RichTextReader, ShowsWhatWordPadWrote) {
    const QString shown = text(sample("written_by_wordpad.rtf"));
    EXPECT_TRUE(
        shown.startsWith(u"R\u00E9sum\u00E9 of the survey\nReadings in red and yellow, under and struck.\n"
                         u"Costs 5 \u20AC.\n\u2022\tSlow\n\u2022\tSteady\n1.\tDrive\n2.\tLog\n"_s))
        << shown.toStdString();
    EXPECT_EQ(formatOf(u"red"_s).foreground().color(), QColor(255, 0, 0));
    EXPECT_EQ(formatOf(u"in "_s).foreground().style(), Qt::NoBrush);
    EXPECT_EQ(formatOf(u"yellow"_s).background().color(), QColor(255, 255, 0));
    ASSERT_EQ(tables().size(), 1);
    EXPECT_EQ(cellText(tables()[0], 1, 1), u"160"_s);
    EXPECT_EQ(tables()[0]->cellAt(0, 0).format().toTableCellFormat().leftBorder(), 1);
    EXPECT_EQ(blockOf(u"Done"_s).blockFormat().alignment(), Qt::AlignRight);
}

TEST_F(RichTextReader, ShowsWhatWordWrote) {
    const QString shown = text(sample("written_by_word.rtf"));
    EXPECT_TRUE(shown.startsWith(
        u"Electromagnetic induction\nConductivity is bold and both, in mS/m\u2009; "
        u"\u041F\u043E\u0447\u0432\u0430 "
        u"\u03A9 caf\u00E9.\n\u2022\tFirst point\n\u25AA\tSecond point\nSee the page or below.\n"_s))
        << shown.toStdString();
    EXPECT_FALSE(shown.contains(u"idden"_s));
    EXPECT_EQ(formatOf(u"induction"_s).foreground().color(), QColor(46, 116, 181));
    EXPECT_EQ(formatOf(u"Small"_s).fontCapitalization(), QFont::SmallCaps);
    EXPECT_EQ(blockOf(u"end"_s).blockFormat().alignment(), Qt::AlignJustify);
}

TEST_F(RichTextReader, ShowsWordsTablesWithShadingAndMergedCells) {
    text(sample("written_by_word.rtf"));
    ASSERT_EQ(tables().size(), 2) << "the row of merged cells has other columns";
    EXPECT_EQ(cellText(tables()[0], 0, 1), u"Meaning"_s);
    EXPECT_EQ(cellText(tables()[0], 1, 1), u"first reading\nsecond paragraph"_s);
    EXPECT_EQ(tables()[0]->cellAt(0, 0).format().background().color(), QColor(217, 226, 243));
    EXPECT_EQ(tables()[1]->columns(), 1);
    EXPECT_EQ(cellText(tables()[1], 0, 0).trimmed(), u"Both columns"_s);
}

TEST_F(RichTextReader, SwitchesCharacterFormatsOnAndOff) {
    bodyText(
        "\\b bold\\b0  \\i slant\\i0  \\ul under\\ulnone  \\strike struck\\strike0  \\super up\\nosupersub  "
        "\\sub down\\nosupersub  {\\fs40 large} {\\f1 typed} {\\cf2 blue} {\\highlight3 marked} "
        "\\b\\i\\plain last");
    EXPECT_EQ(formatOf(u"bold"_s).fontWeight(), QFont::Bold);
    EXPECT_TRUE(formatOf(u"slant"_s).fontItalic());
    EXPECT_NE(formatOf(u"slant"_s).fontWeight(), QFont::Bold);
    EXPECT_TRUE(formatOf(u"under"_s).fontUnderline());
    EXPECT_TRUE(formatOf(u"struck"_s).fontStrikeOut());
    EXPECT_EQ(formatOf(u"up"_s).verticalAlignment(), QTextCharFormat::AlignSuperScript);
    EXPECT_EQ(formatOf(u"down"_s).verticalAlignment(), QTextCharFormat::AlignSubScript);
    EXPECT_EQ(formatOf(u"large"_s).fontPointSize(), 20);
    EXPECT_EQ(formatOf(u"typed"_s).fontFamilies().toStringList(),
              QStringList({u"Courier"_s, u"monospace"_s}));
    EXPECT_EQ(formatOf(u"blue"_s).foreground().color(), QColor(0, 0, 255));
    EXPECT_EQ(formatOf(u"marked"_s).background().color(), QColor(255, 255, 0));
    const auto last = formatOf(u"last"_s);
    EXPECT_NE(last.fontWeight(), QFont::Bold);
    EXPECT_FALSE(last.fontItalic() || last.fontUnderline() || last.fontStrikeOut());
    EXPECT_EQ(last.fontPointSize(), 12);
    EXPECT_EQ(last.fontFamilies().toStringList().value(0), u"Helvetica"_s);
}

TEST_F(RichTextReader, KeepsAGroupsFormatsWithinIt) {
    bodyText("one {\\b two {\\i three}} four");
    EXPECT_EQ(formatOf(u"three"_s).fontWeight(), QFont::Bold);
    EXPECT_FALSE(formatOf(u"two"_s).fontItalic());
    EXPECT_NE(formatOf(u"four"_s).fontWeight(), QFont::Bold);
}

TEST_F(RichTextReader, ShowsTheCharactersThatABodyMeans) {
    const std::tuple<const char*, const char*, QString> cases[] = {
        {"hidden text", "a{\\v secret}b", u"ab"_s},
        {"bytes by the font's code page", "\\'e9 {\\f2\\'cf\\'ee} {\\f3 a\\'b7} {\\f4\\'fc}",
         u"\u00E9 \u041F\u043E \u03B1\u2022 \u2713"_s},
        {"unicode with what stands in for it", "\\u1046?x", u"\u0416x"_s},
        {"two stand-ins", "\\uc2\\u1046\\'3f\\'3fx", u"\u0416x"_s},
        {"no stand-in", "\\uc0\\u1046x", u"\u0416x"_s},
        {"as many as its group says", "{\\uc0\\u1046}\\u1046?x", u"\u0416\u0416x"_s},
        {"a word as stand-in", "\\u8211\\endash x", u"\u2013x"_s},
        {"a tab as none", "\\u8226\\tab x", u"\u2022\tx"_s},
        {"none behind the group's end", "{\\u1046}?x", u"\u0416?x"_s},
        {"surrogates", "\\u-10179?\\u-8704?", u"\U0001F600"_s},
        {"a lone first surrogate", "a\\u-10179?b", u"a\uFFFDb"_s},
        {"a lone second surrogate", "a\\u-8704?b", u"a\uFFFDb"_s},
        {"private characters of symbol fonts", "{\\f3\\u-3913?}{\\f4\\u-3844?}\\u-3913?",
         u"\u2022\u2713\u2022"_s},
        {"special characters", "\\lquote a\\rquote\\ldblquote\\rdblquote\\emdash\\bullet\\_\\{\\}\\\\",
         u"\u2018a\u2019\u201C\u201D\u2014\u2022\u2011{}\\"_s},
        {"marks of the document's own", "a\\u-560?b\\u8233?c\\u-4?d", u"a\uFFFDb\uFFFDc\uFFFDd"_s},
        {"unknown groups and words", "a{\\*\\nonsense hidden{\\b deep}}b\\nonsense7 c", u"abc"_s},
        {"groups that are not shown", "c{\\info{\\title hidden}}{\\header hidden\\par}d", u"cd"_s},
        {"a field", "Page {\\field{\\*\\fldinst PAGE}{\\fldrslt 7}} of it", u"Page 7 of it"_s},
        {"a link", "{\\field{\\fldinst{HYPERLINK \"a\"}}{\\fldrslt here}} or there", u"here or there"_s},
        {"a picture of another kind", "a{\\pict\\wmetafile8\\picw100 010009000003}b", u"ab"_s},
        {"a damaged picture", "a{\\pict\\pngblip 89504e470d0a1a0a00}b", u"ab"_s},
        {"an empty picture", "a{\\pict\\pngblip}b", u"ab"_s}};
    for (const auto& [what, body, shown] : cases) {
        EXPECT_EQ(bodyText(body), shown) << what;
        EXPECT_EQ(document_.blockCount(), 1) << what;
    }
}

TEST_F(RichTextReader, DecodesBytesOfADocumentWithoutFontsByItsCodePage) {
    EXPECT_EQ(text("{\\rtf1\\ansicpg1251 \\'cf}"), u"\u041F"_s);
    EXPECT_EQ(text("{\\rtf1\\ansi caf\xE9}"), u"caf\u00E9"_s);
    EXPECT_EQ(formatOf(u"caf"_s).fontFamilies().toStringList(), QStringList());
}

TEST_F(RichTextReader, SetsAlignmentIndentsAndSpacing) {
    bodyText(
        "\\pard\\qr\\li720\\ri300\\fi-360\\sb120\\sa240\\sl360\\slmult1 a\\par\\pard b\\par\\pard\\qj c");
    const auto format = block(0).blockFormat();
    EXPECT_EQ(format.alignment(), Qt::AlignRight);
    EXPECT_EQ(format.leftMargin(), 48);
    EXPECT_EQ(format.rightMargin(), 20);
    EXPECT_EQ(format.textIndent(), -24);
    EXPECT_EQ(format.topMargin(), 8);
    EXPECT_EQ(format.bottomMargin(), 16);
    EXPECT_EQ(format.lineHeight(), 150);
    EXPECT_EQ(format.lineHeightType(), QTextBlockFormat::ProportionalHeight);
    EXPECT_EQ(block(1).blockFormat().alignment(), Qt::AlignLeft);
    EXPECT_EQ(block(1).blockFormat().leftMargin(), 0);
    EXPECT_EQ(block(2).blockFormat().alignment(), Qt::AlignJustify);
}

TEST_F(RichTextReader, SetsTabStopsFromWhereTheFirstLineBegins) {
    bodyText("\\pard\\li720\\fi-360\\tx1440\\tqr\\tx2880 a\\par");
    const auto tabs = block(0).blockFormat().tabPositions();
    ASSERT_EQ(tabs.size(), 3);
    EXPECT_EQ(tabs[0].position, 24) << "the hanging indent is a stop of its own";
    EXPECT_EQ(tabs[1].position, 72);
    EXPECT_EQ(tabs[2].position, 168);
    EXPECT_EQ(tabs[2].type, QTextOption::RightTab);
}

TEST_F(RichTextReader, TakesTheDistanceOfDefaultTabStops) {
    bodyText("\\deftab1440 a\\tab b");
    EXPECT_EQ(document_.defaultTextOption().tabStopDistance(), 96);
}

TEST_F(RichTextReader, ShowsSymbolsInAnOrdinaryFont) {
    bodyText("{\\f3 a}");
    EXPECT_FALSE(formatOf(u"\u03B1"_s).fontFamilies().toStringList().contains(u"Symbol"_s));
}

TEST_F(RichTextReader, ReadsRowsWhoseDefinitionComesAfterTheirCells) {
    bodyText("\\pard\\intbl a\\cell b\\cell\\trowd\\cellx2000\\cellx5000\\row\\pard after");
    ASSERT_EQ(tables().size(), 1);
    EXPECT_EQ(tables()[0]->columns(), 2);
    EXPECT_EQ(cellText(tables()[0], 0, 1), u"b"_s);
    EXPECT_EQ(blockOf(u"after"_s).text(), u"after"_s);
}

TEST_F(RichTextReader, KeepsTheTextOfNestedCells) {
    bodyText(
        "\\trowd\\cellx4000\\cellx8000\\pard\\intbl outer\\par\\itap2 one\\nestcell two\\nestcell"
        "{\\*\\nesttableprops\\trowd\\cellx2000\\cellx4000\\nestrow}{\\nonesttables\\par}\\pard\\intbl\\cell "
        "right\\cell\\row");
    ASSERT_EQ(tables().size(), 1);
    EXPECT_EQ(cellText(tables()[0], 0, 0), u"outer\none\ntwo"_s);
    EXPECT_EQ(cellText(tables()[0], 0, 1), u"right"_s);
}

TEST_F(RichTextReader, KeepsTheTextOfTablesThatBreakOff) {
    EXPECT_TRUE(bodyText("\\trowd\\cellx2000\\pard\\intbl a\\cell b").contains(u"a\nb"_s));
    EXPECT_TRUE(bodyText("\\pard\\intbl a\\par\\pard b\\par").contains(u"a"_s));
    EXPECT_TRUE(bodyText("\\cell\\row\\cell\\cell\\row x").contains(u"x"_s));
    EXPECT_EQ(bodyText("\\row\\row x"), u"x"_s);
}

TEST_F(RichTextReader, GivesTablesTheirPartOfThePage) {
    bodyText(
        "\\paperw12240\\margl1800\\margr1800\\trowd\\cellx2040\\cellx4080\\pard\\intbl a\\cell b\\cell\\row");
    ASSERT_EQ(tables().size(), 1);
    const auto format = tables()[0]->format();
    EXPECT_EQ(format.width().type(), QTextLength::PercentageLength);
    EXPECT_NEAR(format.width().rawValue(), 50, 0.1);
    EXPECT_NEAR(format.columnWidthConstraints().value(0).rawValue(), 50, 1.5);
}

TEST_F(RichTextReader, KeepsTextAtADistanceFromTheTableAboveIt) {
    const QByteArray table = "\\trowd\\cellx2000\\pard\\intbl a\\cell\\row";
    bodyText(table + "\\pard near\\par");
    EXPECT_EQ(tables()[0]->format().bottomMargin(), 12);
    bodyText(table + "\\pard\\sb600 far\\par");
    EXPECT_EQ(tables()[0]->format().bottomMargin(), 40);
    bodyText(table + "\\trowd\\cellx3000\\pard\\intbl b\\cell\\row\\pard after\\par");
    EXPECT_EQ(tables()[0]->format().bottomMargin(), 0) << "tables one below the other look like one";
}

TEST_F(RichTextReader, ShowsPngAndJpegPictures) {
    bodyText("a{\\*\\shppict{\\pict{\\*\\picprop hidden}\\pngblip\\picwgoal900\\pichgoal450 " +
             pictureBytes("png").toHex() + "}}{\\nonshppict{\\pict\\wmetafile8 0102}}b");
    EXPECT_EQ(onlyPicture().size(), QSize(6, 3));
    EXPECT_EQ(document_.toPlainText(), u"a\uFFFCb"_s);
    const auto format =
        document_.find(QString(QChar::ObjectReplacementCharacter)).charFormat().toImageFormat();
    EXPECT_EQ(format.width(), 60);
    EXPECT_EQ(format.height(), 30);

    const QByteArray jpeg = pictureBytes("jpg");
    bodyText("{\\pict\\jpegblip\\bin" + QByteArray::number(jpeg.size()) + " " + jpeg + "}c");
    EXPECT_EQ(document_.toPlainText(), u"\uFFFCc"_s);
}

TEST_F(RichTextReader, PassesOverPicturesTooLargeForADocument) {
    QByteArray png = pictureBytes("png");
    png.replace(16, 8, QByteArray::fromHex("0000ea600000ea60"));  // 60,000 by 60,000 points
    EXPECT_EQ(bodyText("a{\\pict\\pngblip " + png.toHex() + "}b"), u"ab"_s);
}

TEST_F(RichTextReader, LimitsLengthsAndSizesToAPage) {
    bodyText(
        "\\pard\\li999999999\\fi-999999999\\ri999999999\\sa999999999\\sb-5\\tx999999999\\fs999999999 a\\par");
    const auto format = block(0).blockFormat();
    EXPECT_LE(format.leftMargin(), 500);
    EXPECT_GE(format.leftMargin() + format.textIndent(), 0);
    EXPECT_LE(format.bottomMargin(), 200);
    EXPECT_EQ(format.topMargin(), 0);
    EXPECT_LE(formatOf(u"a"_s).fontPointSize(), 144);
}

TEST_F(RichTextReader, ReplacesWhatTheDocumentHeldBefore) {
    bodyText("\\trowd\\cellx2000\\pard\\intbl\\qc\\b first\\cell\\row");
    EXPECT_EQ(bodyText("second"), u"second"_s);
    EXPECT_TRUE(tables().isEmpty());
}

TEST_F(RichTextReader, ShowsOtherFilesAsPlainText) {
    EXPECT_EQ(text("no {\\b rich} text\r\nsecond line"), u"no {\\b rich} text\nsecond line"_s);
    EXPECT_FALSE(isRichText_);
    EXPECT_EQ(text("caf\xC3\xA9"), u"caf\u00E9"_s);
    EXPECT_EQ(text("caf\xE9 5 \x80"), u"caf\u00E9 5 \u20AC"_s);
    EXPECT_EQ(text(""), QString());
    EXPECT_FALSE(isRichText_);
    EXPECT_EQ(text("a\0b"_ba), u"ab"_s);
}

TEST_F(RichTextReader, ReadsOnWhereADocumentIsDamaged) {
    const std::tuple<const char*, QByteArray, QString> cases[] = {
        {"a mark and blanks before it", "\xEF\xBB\xBF\r\n{\\rtf1 a}", u"a"_s},
        {"a group's end too many", "{\\rtf1 a}}} b", u"a b"_s},
        {"fonts that do not end", "{\\rtf1{\\fonttbl{\\f0 Arial;\\pard Text is here\\par}",
         u"Text is here"_s},
        {"NUL bytes", "{\\rtf1 a\0b\\b\0 c}\0\0"_ba, u"ab c"_s}};
    for (const auto& [what, bytes, shown] : cases) {
        EXPECT_EQ(text(bytes), shown) << what;
        EXPECT_TRUE(isRichText_) << what;
    }
}

TEST_F(RichTextReader, ReadsAHundredThousandNestedGroups) {
    const QByteArray deep = QByteArray("{\\b ").repeated(100'000);
    EXPECT_EQ(text("{\\rtf1 " + deep + "deep" + QByteArray("}").repeated(100'000) + " after}"),
              u"deep after"_s);
    EXPECT_EQ(text("{\\rtf1 " + deep + "deep"), u"deep"_s);
}

TEST_F(RichTextReader, ReadsEveryDocumentCutAtEveryByte) {
    for (const char* name : {"a_little_of_everything.rtf", "written_by_word.rtf"}) {
        const QByteArray whole = sample(name);
        for (qsizetype length = 6; length < whole.size(); ++length)
            ASSERT_EQ(readRichText(QByteArrayView(whole).first(length), document_), RichTextResult::kRichText)
                << name << " " << length;
    }
}

TEST_F(RichTextReader, ReadsADocumentWithAnyByteChangedOrInserted) {
    const QByteArray whole = sample("a_little_of_everything.rtf");
    const auto length = text(whole).size();
    for (qsizetype at = 5; at < whole.size(); ++at) {
        SCOPED_TRACE(at);
        for (const char change : {'\x01', '\x08', '\x20', '\x7F'}) {
            QByteArray damaged = whole;
            damaged[at] = static_cast<char>(damaged[at] ^ change);
            ASSERT_LE(text(damaged).size(), 2 * whole.size() + length);
        }
        for (const char foreign : {'\0', '{', '}', '\\'}) {
            text(QByteArray(whole).insert(at, 1, foreign));
            ASSERT_TRUE(isRichText_);
            ASSERT_LT(document_.characterCount(), 3 * whole.size());
        }
    }
}

// What the reader gives up before the library takes time by the square of it.
TEST_F(RichTextReader, RefusesWhatCannotBeLaidOutInProportionToItsBytes) {
    const QByteArray parts[] = {
        "\\b a\\b0 b",           // 92,000 runs in one word
        "aaaaaaaaaa",            // one word of half a megabyte
        "\\u1046?\\u769?",       // the same of other letters
        "\\u-16302?\\u-16302?",  // Korean, which ends lines at blanks only
        "\\cell\\row ",          // a table of cells alone
        "\\trowd\\cellx1000\\cellx2000\\intbl a\\cell b\\cell\\row ",  // a table of rows
        "\\trowd\\cellx1000\\intbl a\\cell\\row\\trowd\\cellx2000\\intbl b\\cell\\row ",
        "\\par ",
        "\\intbl a\\par ",
        "\\b a \\b0 b ",
        "a\\tab "};
    for (const auto& part : parts) {
        const auto whole = page("\\tqr\\tx5000 " + part.repeated(700'000 / part.size()));
        EXPECT_EQ(readRichText(whole, document_), RichTextResult::kTooLarge) << part.constData();
        EXPECT_TRUE(document_.isEmpty()) << part.constData();
        EXPECT_EQ(document_.blockCount(), 1) << part.constData();
        EXPECT_EQ(readRichText(page(part.repeated(500)), document_), RichTextResult::kRichText)
            << part.constData();
    }
}

TEST_F(RichTextReader, RefusesPlainTextOfOneEndlessWordOrOfTooManyLines) {
    EXPECT_EQ(readRichText(QByteArray(500'000, 'a'), document_), RichTextResult::kTooLarge);
    EXPECT_EQ(readRichText(QByteArray(500'000, '\xE9'), document_), RichTextResult::kTooLarge);
    EXPECT_EQ(readRichText(QByteArray(500'000, '\r'), document_), RichTextResult::kTooLarge);
    EXPECT_TRUE(document_.isEmpty());
    EXPECT_EQ(readRichText(QByteArray("A word\r").repeated(10'000), document_), RichTextResult::kPlainText);
    EXPECT_EQ(document_.blockCount(), 10'001);
}

TEST_F(RichTextReader, RefusesMoreFontsThanCanBeLookedFor) {
    QByteArray fonts, body;
    for (int i = 0; i < 2'000; ++i) {
        const auto number = QByteArray::number(i);
        fonts += "{\\f" + number + " Font" + number + ";}";
        body += "\\f" + number + " a\\par ";
    }
    const QByteArray whole = "{\\rtf1{\\fonttbl" + fonts + "}" + body + "}";
    EXPECT_EQ(readRichText(whole, document_), RichTextResult::kTooLarge);
}

TEST_F(RichTextReader, ShowsABookOfTwoMegabytes) {
    const auto paragraph =
        QByteArray("The rows of a field lie side by side. ").repeated(20) + "\\b End\\b0 .\\par ";
    EXPECT_EQ(readRichText(page(paragraph.repeated(2'600)), document_), RichTextResult::kRichText);
    EXPECT_EQ(document_.blockCount(), 2'600);
}

TEST_F(RichTextReader, LeavesThePagesMarginsWhateverItShows) {
    auto margins = document_.rootFrame()->frameFormat();
    margins.setLeftMargin(77);
    document_.rootFrame()->setFrameFormat(margins);
    for (const QByteArray& bytes : {page("a\\par b"), "plain"_ba, QByteArray(500'000, 'a')}) {
        readRichText(bytes, document_);
        EXPECT_EQ(document_.rootFrame()->frameFormat().leftMargin(), 77);
    }
}

}  // namespace tessel
