// SPDX-License-Identifier: GPL-3.0-or-later
// How the lines of a delimited file become records and values.
#include "import/generic_file.h"
#include "support/made_survey.h"
#include "support/utf16.h"

namespace tessel {

TEST_F(GenericFile, MayBeSeparatedByCommasBlanksTabsAndLineEnds) {
    for (const char* bytes : {"1,2,3\n4,5,6\n", "1 2 3\r\n4 5 6\r\n", "1\t2\t3\r4\t5\t6",
                              "  1 , 2\t,\t3  \n\n\n 4,5 6", "\xEF\xBB\xBF\x31,2,3\n4,5,6",
                              // records across lines, and several on one
                              "1\n2\n3\n4\n5\n6\n", "1,2\n3,4\n5,6\n", "1,2,3,4,5,6\n", "1 2 3 4 5 6",
                              "1,\n2,\n3,\n4,\n5,\n6\n", "1,2,\n3\n4,5,\n6\n", "1,2\n,3\n4,5\n,6\n",
                              // commas at the ends of the lines
                              "1,2,3,\n4,5,6,\n"})
        EXPECT_EQ(sitesOf(bytes), "1 2 3;4 5 6;") << bytes;
}

TEST_F(GenericFile, MayHaveQuotedValues) {
    EXPECT_EQ(sitesOf("\"1\",\" 2 \",\"3\"\n\"4\" \"5\" \"6\""), "1 2 3;4 5 6;");
    const std::pair<const char*, const char*> cases[] = {
        {"\"1,5\",2,3\n", "\"1,5\" 2 3  -> non-numeric X-coord data"},
        {"\"1\"x,2,3\n", "\"1\"x 2 3  -> non-numeric X-coord data"},
        {"1,2,\"3\n4,5,6\n", "1 2 \"3  -> non-numeric 1st EM reading"},
        {"\"\",2,3\n", "\"\" 2 3  -> non-numeric X-coord data"}};
    for (const auto& [bytes, line] : cases)
        EXPECT_EQ(logOf(bytes), "Line # 1 " + std::string(line) + "\r\n");
}

TEST_F(GenericFile, LosesOneRecordToAHeaderLine) {
    const auto result = import("X,Y,ECa\n1,2,3\n4,5,6\n");
    EXPECT_EQ(result.survey.NumSites, 2);
    EXPECT_EQ(result.rejected, 1);
    EXPECT_EQ(log(), "Line # 1 X Y ECa  -> non-numeric X-coord data\r\n");
}

TEST_F(GenericFile, LosesOneRecordToAValueMissingBetweenCommas) {
    EXPECT_EQ(sitesOf("1,,3\n4,5,6\n"), "4 5 6;");
    EXPECT_EQ(log(), "Line # 1 1  3  -> non-numeric Y-coord data\r\n");
    EXPECT_EQ(sitesOf("1 , \t, 3\n4,5,6\n"), "4 5 6;");
    EXPECT_EQ(sitesOf("1,2,3\n,5,6\n7,8,9\n"), "1 2 3;7 8 9;");
    EXPECT_EQ(log(), "Line # 2  5 6  -> non-numeric X-coord data\r\n");
}

TEST_F(GenericFile, LosesOneRecordToAValueMissingAtTheEndOfItsLine) {
    EXPECT_EQ(sitesOf("1,2,3\n4,5,\n7,8,9\n"), "1 2 3;7 8 9;");
    EXPECT_EQ(log(), "Line # 2 4 5  -> incomplete record\r\n");
    EXPECT_EQ(sitesOf("2,102,\n3,103,\n4,104,5\n"), "4 104 5;");
    EXPECT_EQ(log(), "Line # 1 2 102  -> incomplete record\r\nLine # 2 3 103  -> incomplete record\r\n");
    EXPECT_EQ(sitesOf("1,2,3,4,5 , \t\n7,8,9\n"), "1 2 3;7 8 9;") << "behind a record on the same line";
    EXPECT_EQ(sitesOf("1,\n2,\n7,8,9\n"), "7 8 9;") << "a record of several lines";
    EXPECT_EQ(sitesOf("4,5,\n\n \n7,8,9\n"), "7 8 9;") << "empty lines between";
}

TEST_F(GenericFile, GoesOnOverALineEndUnlessTheNextLineIsARecord) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"1,2,\n3\n4,5,6\n", "1 2 3;4 5 6;", "the next line is none"},
        {"1,2,\n3,4,5,6\n7,8\n", "1 2 3;4 5 6;", "more values than a record"},
        {"1,2,\n3,4,5,6,\n7,8\n9\n", "1 2 3;4 5 6;7 8 9;", "and a comma behind them"},
        {"1,2\n3,4,5\n6\n", "1 2 3;4 5 6;", "no comma in front of the line end"},
        {"1,2\n,3,4\n5,6\n", "1 2 3;4 5 6;", "the comma stands behind it"},
        {"4,5,\n7,8,9,\n1,2,3,\n", "7 8 9;1 2 3;", "a record with a comma behind it"},
        {"4,5,\n7,8,, \n1,2,3,\n", "1 2 3;", "and without its last value"}};
    for (const auto& [bytes, sites, what] : cases)
        EXPECT_EQ(sitesOf(bytes), sites) << what;
}

TEST_F(GenericFile, CountsTheLinesThatDoNotFit) {
    const std::tuple<const char*, int, int, const char*> cases[] = {
        {"1,2,3\n\n 4 5 6 \n , \t , \n7,8,9,\n1,2,\n3,4,\n,,\n", 0, 0, "all fit"},
        {"1,2,3\n4,5\n6\n7,8,9\n", 2, 2, "read on over a line end"},
        {"1,2,3\n4,5,6,7,8,9\n", 1, 2, "two records"},
        {"1,2,3\n\n1,2,3,4\n", 1, 3, "too many values"},
        {"1,2,3\n1,2,3,,\n", 1, 2, "too many commas"},
        {"Field 7\n1,2,3\n", 1, 1, "a header"},
        {"1,2,\n3\n", 1, 2, "a value where a record was to begin"},
        {"1\n,2\n", 2, 1, "a value a line"}};
    for (const auto& [bytes, lines, first, what] : cases) {
        const ImportSummary summary = import(bytes).summary;
        EXPECT_EQ(summary.linesNotFitting, lines) << what;
        EXPECT_EQ(summary.firstLineNotFitting, first) << what;
    }
}

TEST_F(GenericFile, CutShortByItsEndLosesTheLastRecord) {
    const auto result = import("1,2,3\n4,\n5");
    EXPECT_EQ(result.survey.NumSites, 1);
    EXPECT_EQ(result.rejected, 1);
    EXPECT_EQ(log(), "Line # 2 4 5  -> incomplete record at end of file\r\n");
    EXPECT_EQ(logOf("1,2,3\n4,5,\n"), "Line # 2 4 5  -> incomplete record at end of file\r\n");
}

TEST_F(GenericFile, OfOddNumbersTakesThoseThatAreNumeric) {
    for (const char* number : {"-0", ".5", "5.", "+.5E+1", "1d5", "1e308"})
        EXPECT_EQ(import("1," + std::string(number) + ",3").survey.NumSites, 1) << number;
    for (const char* text : {"nan", "inf", "0x10", "1e999", ".", "1.2.3", "1-2"})
        EXPECT_EQ(import("1," + std::string(text) + ",3").rejected, 1) << text;
    EXPECT_EQ(import("1,0." + std::string(400, '3') + ",3").survey.SiteData(kY, 0), 1.0 / 3);
}

TEST_F(GenericFile, WithDecimalCommasHasSemicolonsBetweenItsValues) {
    options.decimalCommas = true;
    const Survey survey = import("1,25;-2,5;3\r\n\"4,5\" ; +,5\t;1,5E1;\n0,1;1234567,125;,0\n").survey;
    ASSERT_EQ(survey.NumSites, 3);
    EXPECT_EQ(readingsOf(survey, kX), (std::vector{1.25, 4.5, 0.1}));
    EXPECT_EQ(readingsOf(survey, kY), (std::vector{-2.5, 0.5, 1234567.125}));
    EXPECT_EQ(readingsOf(survey, kEM1), (std::vector{3.0, 15.0, 0.0}));
    EXPECT_EQ(import("1," + std::string(400, '3') + ";2;3\n").survey.SiteData(kX, 0), 4.0 / 3);
}

TEST_F(GenericFile, WithDecimalCommasTakesNoPointAndNoBlankInAValue) {
    options.decimalCommas = true;
    EXPECT_EQ(logOf("1.5;2;3\n"), "Line # 1 1.5 2 3  -> non-numeric X-coord data\r\n");
    EXPECT_EQ(logOf("1.234,5;2;3\n1;2 345;3\n1;2;3,4,5\n\"1;5\";2;3\nX;Y;E C\n"),
              "Line # 1 1.234,5 2 3  -> non-numeric X-coord data\r\n"
              "Line # 2 1 2 345 3  -> non-numeric Y-coord data\r\n"
              "Line # 3 1 2 3,4,5  -> non-numeric 1st EM reading\r\n"
              "Line # 4 \"1;5\" 2 3  -> non-numeric X-coord data\r\n"
              "Line # 5 X Y E C  -> non-numeric X-coord data\r\n");
}

TEST_F(GenericFile, InUtf16IsReadAndLoggedInUtf8) {
    const std::u16string text = u"X;Übersicht;EC\r\n1,5;2;3\r\n4;5;6";
    options.decimalCommas = true;
    for (const std::u16string& bytes : {u"\uFEFF" + text, text}) {
        EXPECT_EQ(sitesOf(utf16(bytes)), "1 2 3;4 5 6;");
        EXPECT_EQ(log(), "Line # 1 X \u00DCbersicht EC  -> non-numeric X-coord data\r\n");
    }
}

}  // namespace tessel
