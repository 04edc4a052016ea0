// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/RichTextMeasure.h"

namespace tessel {

namespace {

qint64 partsOf(const QStringList& runs) {
    RichTextMeasure measure;
    for (const QString& run : runs)
        measure.addRun(run, {});
    measure.endParagraph();
    return measure.parts();
}

qint64 partsOfWord(qsizetype length) {
    return partsOf({QString(length, u'a')});
}

}  // namespace

TEST(RichTextMeasure, CountsRunsParagraphsAndCells) {
    RichTextMeasure measure;
    measure.addRun(u"one "_s, {});
    measure.addRun(u"two"_s, {});
    measure.endParagraph();
    EXPECT_EQ(measure.parts(), 3);
    measure.endParagraph();
    EXPECT_EQ(measure.parts(), 4);
    measure.addCell();
    EXPECT_EQ(measure.parts(), 4 + RichTextMeasure::kPartsOfCell);
    EXPECT_FALSE(measure.isTooLarge());
}

TEST(RichTextMeasure, CountsAFontOnce) {
    RichTextMeasure measure;
    for (int i = 0; i < 3; ++i)
        measure.addRun(u"a"_s, {u"Courier"_s, u"monospace"_s});
    EXPECT_EQ(measure.parts(), 3 + RichTextMeasure::kPartsOfFont);
}

TEST(RichTextMeasure, CountsLongWordsByTheSquareOfTheirLength) {
    EXPECT_EQ(partsOfWord(500), 2);
    EXPECT_NEAR(static_cast<double>(partsOfWord(20'000)), 4.0 * static_cast<double>(partsOfWord(10'000)),
                100);
}

TEST(RichTextMeasure, LooksForPlacesWhereALineMayEnd) {
    EXPECT_LT(partsOf({QString(u"word "_s).repeated(20'000)}), 50);
    EXPECT_LT(partsOf({QString(20'000, u'\u4E2D')}), 50) << "Chinese needs no blanks";
    EXPECT_GT(partsOf({QString(20'000, u'\uC911')}), 100'000) << "Korean does";
    EXPECT_GT(partsOf({QString(u"; "_s).repeated(10'000)}), 100'000) << "no line begins with a semicolon";
}

TEST(RichTextMeasure, CountsTheRunsOfAWord) {
    EXPECT_GT(partsOf(QStringList(2'000, u"ab"_s)), 4 * partsOfWord(4'000));
    EXPECT_LT(partsOf(QStringList(2'000, u"a "_s)), 2'050);
}

TEST(RichTextMeasure, CountsTabsOfOneParagraphByTheirSquare) {
    const qint64 few = partsOf({QString(u"a\t"_s).repeated(10'000)});
    const qint64 many = partsOf({QString(u"a\t"_s).repeated(40'000)});
    EXPECT_GT(many, 10 * few);
}

TEST(RichTextMeasure, FindsTooManyCharactersTooLarge) {
    RichTextMeasure measure;
    for (int i = 0; i < 400; ++i)
        measure.addRun(QString(10'000, u' '), {});
    EXPECT_FALSE(measure.isTooLarge());
    measure.addRun(u"a"_s, {});
    EXPECT_TRUE(measure.isTooLarge());
}

}  // namespace tessel
