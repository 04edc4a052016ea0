// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/table_shape.h"

namespace tessel {

namespace {

using Texts = std::vector<std::string>;
using Roles = std::vector<TableRole>;
using enum TableRole;

Texts split(char separator, std::string_view line) {
    FieldSplitter splitter(separator);
    Texts texts;
    for (const std::string_view field : splitter.split(line))
        texts.emplace_back(field);
    return texts;
}

double read(std::string_view field, char decimalSign = '.', bool letters = true) {
    double number = -999;
    return readField(field, decimalSign, letters, number) ? number : -999;
}

// A logger's export: tabs, degrees and minutes with a letter, a value fewer on each line than in the header.
const std::string kLoggerFile =
    "Latitude\tLongitude\tTime\tCond.1[mS/m]\tInph.1[ppt]\tCond.2[mS/m]\tInv.Cond.1[mS/m]\tNote\n"
    "5224.461145N\t00220.673280W\t09:51:46.89\t4.90\t2.34\t7.52\t1.78\n"
    "5224.461129N\t00220.673282W\t09:51:47.94\t4.82\t2.35\t7.38\t1.76\n";

}  // namespace

TEST(TableFields, AreCutAtSeparatorsWithBlanksAroundThemTakenAway) {
    EXPECT_EQ(split(',', "1, 2 ,,x y"), (Texts{"1", "2", "", "x y"}));
    EXPECT_EQ(split(',', "1,2,"), (Texts{"1", "2", ""}));
    EXPECT_EQ(split('\t', "1\t 2\t\t3"), (Texts{"1", "2", "", "3"}));
    EXPECT_EQ(split(';', ";"), (Texts{"", ""}));
    EXPECT_EQ(split(' ', "  1  2\t 3 "), (Texts{"1", "2", "3"}));
    EXPECT_EQ(split(',', " \t"), Texts());
    EXPECT_EQ(split(' ', ""), Texts());
}

TEST(TableFields, InQuotesAreTheirContent) {
    EXPECT_EQ(split(',', "\"a,b\", \"1\" ,2"), (Texts{"a,b", "1", "2"}));
    EXPECT_EQ(split(' ', "\"X (m)\" 2"), (Texts{"X (m)", "2"}));
    EXPECT_EQ(split(',', "\"open,1"), (Texts{"\"open", "1"}));
    EXPECT_EQ(split(',', "\"\",1"), (Texts{"", "1"}));
}

TEST(TableNumbers, AreReadWithEitherDecimalSign) {
    EXPECT_EQ(read("-1.5"), -1.5);
    EXPECT_EQ(read("-1,5", ','), -1.5);
    EXPECT_EQ(read("1.5", ','), -999) << "might be thousands";
    EXPECT_EQ(read("1,5"), -999);
    EXPECT_EQ(read(""), -999);
    EXPECT_EQ(read(std::string(70, '1'), ','), -999);
}

TEST(TableNumbers, HaveTheSignOfTheirDirectionOnEitherSide) {
    EXPECT_EQ(read("5224.5N"), 5224.5);
    EXPECT_EQ(read("00220.5 w"), -220.5);
    EXPECT_EQ(read("S 12.25"), -12.25);
    EXPECT_EQ(read("E12,25", ','), 12.25);
    EXPECT_EQ(read("12.25W", '.', false), -999);
    EXPECT_EQ(read("N"), -999);
    EXPECT_EQ(read("12.25X"), -999);
}

TEST(TableShapes, AreRecognisedByMostNumbers) {
    EXPECT_EQ(recogniseTable(kLoggerFile, false), (TableShape{'\t', '.', 1, false}));
    EXPECT_EQ(recogniseTable("x,y,ec\n1.5,2.5,3\n", false), (TableShape{',', '.', 1, false}));
    EXPECT_EQ(recogniseTable("a\n\nx;y;ec\n1,5;2,5;3\n1,5;2,5;3\n", false), (TableShape{';', ',', 3, false}));
    EXPECT_EQ(recogniseTable("1 2 3\n", false), (TableShape{' ', '.', 0, false}));
    EXPECT_EQ(recogniseTable("", false), TableShape());
    EXPECT_EQ(recogniseTable("no numbers at all\n", false), TableShape());
    EXPECT_EQ(recogniseTable("x\ty\n1,5\t2,5\n", false), (TableShape{'\t', ',', 1, false}));
}

TEST(TablePreviews, ShowTheHeaderAndTheLinesBelowIt) {
    const TablePreview preview = previewTable(kLoggerFile, false, {'\t', '.', 1, false});
    EXPECT_EQ(preview.columns, 8U);
    EXPECT_EQ(preview.header[7], "Note");
    ASSERT_EQ(preview.lines.size(), 2U);
    EXPECT_EQ(preview.lines[0].size(), 7U);
    EXPECT_EQ(preview.lines[1][0], "5224.461129N");
    const TablePreview bare = previewTable("1,2\n\n3,4,5\n", false, {',', '.', 0, false});
    EXPECT_TRUE(bare.header.empty());
    EXPECT_EQ(bare.lines.size(), 2U);
    EXPECT_EQ(bare.columns, 3U);
}

TEST(TablePreviews, AreShortAndShowNoControlCharacters) {
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += "1,\x01" + std::string(100, '2') + "\n";
    const TablePreview preview = previewTable(text, true, TableShape());
    EXPECT_EQ(preview.lines.size(), 20U);
    EXPECT_EQ(preview.lines[0][1], "?" + std::string(39, '2'));
}

TEST(TableRoles, AreGuessedFromTheWordsOfTheHeader) {
    const auto rolesOf = [](Texts header) {
        TablePreview preview;
        preview.columns = header.size();
        preview.header = std::move(header);
        return guessRoles(preview);
    };
    EXPECT_EQ(guessRoles(previewTable(kLoggerFile, false, {'\t', '.', 1, false})),
              (Roles{kLatitude, kLongitude, kNothing, kEM1, kNothing, kEM2, kNothing, kNothing}));
    EXPECT_EQ(rolesOf({"Site", "X (m)", "Y (m)", "Longitude (degrees)", "Latitude (degrees)", "EM1 (mS/m)",
                       "EM2 (mS/m)", "Row", "Line"}),
              (Roles{kSite, kX, kY, kNothing, kNothing, kEM1, kEM2, kRow, kNothing}));
    EXPECT_EQ(rolesOf({"easting", "northing", "ECa", "xyz", "x"}), (Roles{kX, kY, kEM1, kNothing, kNothing}));
    EXPECT_EQ(rolesOf({"lon", "lat", "x"}), (Roles{kLongitude, kLatitude, kX})) << "no Y";
    EXPECT_EQ(rolesOf({}), Roles());
}

TEST(TableRoles, OfAPointsOwnPositionComeBeforeThoseOfItsColumns) {
    const auto rolesOf = [](const char* text) {
        return guessRolesBesidePosition(previewTable(text, false, {',', '.', 1, false}));
    };
    EXPECT_EQ(rolesOf("longitude,latitude,x,y,em1\n1,2,3,4,5\n"),
              (Roles{kLongitude, kLatitude, kNothing, kNothing, kEM1}));
    EXPECT_EQ(rolesOf("X,Y,lat,lon,em1\n1,2,3,4,5\n"), (Roles{kX, kY, kNothing, kNothing, kEM1}));
    EXPECT_EQ(rolesOf("longitude,latitude,x,y,em1\n,,3,4,5\n"), (Roles{kNothing, kNothing, kX, kY, kEM1}));
    EXPECT_EQ(rolesOf("X\n1\n"), Roles{kX});
}

TEST(TableRoles, AreNotGuessedForColumnsThatAreEmpty) {
    const TablePreview preview =
        previewTable("x,y,site,em1,em2,row\n1,2,,3,\" \",1\n1,3,,4,,2\n1,4\n", false, {',', '.', 1, false});
    EXPECT_EQ(guessRoles(preview), (Roles{kX, kY, kNothing, kEM1, kNothing, kRow}));
}

TEST(TableRoles, AreGivenToOneColumnEach) {
    Roles roles = {kX, kY, kNothing};
    giveRole(roles, 2, kX);
    EXPECT_EQ(roles, (Roles{kNothing, kY, kX}));
    giveRole(roles, 1, kNothing);
    EXPECT_EQ(roles, (Roles{kNothing, kNothing, kX}));
}

TEST(TableRoles, AreCompleteWithAPositionAndAReading) {
    EXPECT_EQ(whatIsMissing({kX, kY, kEM1}), "");
    EXPECT_EQ(whatIsMissing({kLongitude, kLatitude, kEM1, kEM2, kSite, kRow}), "");
    EXPECT_EQ(whatIsMissing({kEM1}), "Say which columns hold X and Y, or longitude and latitude.");
    EXPECT_EQ(whatIsMissing({kX, kEM1}), "Say which column holds the Y.");
    EXPECT_EQ(whatIsMissing({kLatitude, kEM1}), "Say which column holds the longitude.");
    EXPECT_EQ(whatIsMissing({kX, kLatitude, kEM1}), "Choose either X and Y, or longitude and latitude.");
    EXPECT_EQ(whatIsMissing({kX, kY, kEM2}), "Say which column holds EM1.");
    EXPECT_EQ(nameOf(kSite), "site number");
}

TEST(TableRoles, TellDegreesFromDegreesAndMinutes) {
    const TableShape shape{'\t', '.', 1, false};
    const TablePreview preview = previewTable(kLoggerFile, false, shape);
    EXPECT_TRUE(looksLikeMinutes(preview, shape, guessRoles(preview)));
    const TablePreview degrees = previewTable("lat,lon,ec\n52.4,-2.3,500\n", false, {',', '.', 1, false});
    EXPECT_FALSE(looksLikeMinutes(degrees, {',', '.', 1, false}, guessRoles(degrees)));
    const TablePreview metres = previewTable("x,y,ec\n500000,5e6,500\n", false, {',', '.', 1, false});
    EXPECT_FALSE(looksLikeMinutes(metres, {',', '.', 1, false}, guessRoles(metres)));
}

}  // namespace tessel
