// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/fixed_column_notice.h"

#include <gtest/gtest.h>

namespace tessel {

TEST(FixedColumnNotice, OfAnOrdinaryFileIsNone) {
    const FixedColumnNotice notice = fixedColumnNotice({});
    EXPECT_EQ(notice.text, "");
    EXPECT_FALSE(notice.isWarning);
}

TEST(FixedColumnNotice, WarnsOfWhatColumnsOfCharactersDoNotFit) {
    FileKind kind;
    kind.isText = false;
    EXPECT_EQ(fixedColumnNotice(kind).text, "This is not a text file.");
    EXPECT_TRUE(fixedColumnNotice(kind).isWarning);
    kind = {};
    kind.tabs = true;
    EXPECT_EQ(
        fixedColumnNotice(kind).text,
        "Tabs stand between the values: columns of characters will not line up; the generic import fits.");
    EXPECT_TRUE(fixedColumnNotice(kind).isWarning);
    kind = {};
    kind.decimalCommas = true;
    EXPECT_EQ(fixedColumnNotice(kind).text,
              "Semicolons stand between the values and commas in the numbers; the generic import fits.");
    EXPECT_TRUE(fixedColumnNotice(kind).isWarning);
}

TEST(FixedColumnNotice, TellsOfHeaderLinesAndUtf16WithoutAWarning) {
    FileKind kind;
    kind.headerLines = 1;
    EXPECT_EQ(fixedColumnNotice(kind).text, "The first line is a header; it will be in the error log.");
    kind.headerLines = 3;
    kind.encoding = TextEncoding::Utf16BigEndian;
    EXPECT_EQ(fixedColumnNotice(kind).text,
              "The text is UTF-16; it is read as what it says.\n"
              "The first 3 lines are a header; they will be in the error log.");
    EXPECT_FALSE(fixedColumnNotice(kind).isWarning);
    kind.tabs = true;
    EXPECT_TRUE(fixedColumnNotice(kind).isWarning);
}

}  // namespace tessel
