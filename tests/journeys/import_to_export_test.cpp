// SPDX-License-Identifier: GPL-3.0-or-later
// One survey on its way through the program, from the sensor file to the transect file, byte by byte.
#include "journal/journal.h"
#include "support/RunningProgram.h"

namespace tessel {

namespace {

// Columns: site number 1-4, X 5-13, Y 14-23, EM1 24-29, EM2 30-38. Two runs of three and four sites, 40 m
// apart, and one line for every reason to reject one.
constexpr const char* kSensorFile =
    "   1   100.00   200.00   25.4   30.5\r\n"
    "   2   100.00   205.00   26.0   -0.25\r\n"
    "\r\n"
    "  x3   100.00   210.00   27.1   31.0\r\n"
    "   4   100.00   210.00   27.5   32.0\r\n"
    "   5   140.00   210.00   28.5     n/a\r\n"
    "   6   140.00   210.00   28.5   -10.5\r\n"
    "   7   14O.00   210.00   28.5   33.0\r\n"
    "   8   140.00   21,0.0   28.5   33.0\r\n"
    "   9   140.00   210.00   ----   33.0\r\n"
    "  10   140.00   210.00  -10.1   33.0\r\n"
    "  11   140.00   210.00    0.5   33.0\r\n"
    "  12   140.00   205.00  -10.0  -10.0\r\n"
    "  13   140.00   200.125 28.75   34.0\r\n"
    "  14   140.00   195.00   1E-5   1D2";

constexpr const char* kErrorLog =
    "Line # 4   x3   100.00   210.00   27.1   31.0  -> non-numeric site ID\r\n"
    "Line # 6    5   140.00   210.00   28.5     n/a  -> non-numeric 2nd EM reading\r\n"
    "Line # 7    6   140.00   210.00   28.5   -10.5  -> 2nd EM reading below cut-off\r\n"
    "Line # 8    7   14O.00   210.00   28.5   33.0  -> non-numeric X-coord data\r\n"
    "Line # 9    8   140.00   21,0.0   28.5   33.0  -> non-numeric Y-coord data\r\n"
    "Line # 10    9   140.00   210.00   ----   33.0  -> non-numeric 1st EM reading\r\n"
    "Line # 11   10   140.00   210.00  -10.1   33.0  -> 1st EM reading below cut-off\r\n";

// Worked out by hand: zones begin in columns 1, 15, 29, 43, 57 and 71; rows 1 and 2 are written as 5 and 6.
constexpr const char* kTransectFile =
    " 1             100           200           25.4          30.5          5 \r\n"
    " 2             100           205           26           -.25           5 \r\n"
    " 4             100           210           27.5          32            5 \r\n"
    " 11            140           210           .5            33            6 \r\n"
    " 12            140           205          -10           -10            6 \r\n"
    " 13            140           200.125       28.75         34            6 \r\n"
    " 14            140           195           1E-05         100           6 \r\n";

class ImportToExport : public testing::Test, protected RunningProgram {};

}  // namespace

TEST_F(ImportToExport, WritesTheTransectFileAndTheErrorLogByteByByte) {
    writeFile(folder / "survey.dat", kSensorFile);
    expectTrimbleReport(7, 7);
    importTrimbleFile(*main, {folder / "survey.dat", u"20"_s, {1, 4}, {5, 13}, {14, 23}, {24, 29}, {30, 38}});
    EXPECT_EQ(theSurvey().NumSites, 7);
    EXPECT_EQ(theSurvey().NumRows, 2);
    EXPECT_FALSE(theSession().DataSaved);
    EXPECT_EQ(readFile(folder / "error_log.dat"), kErrorLog);

    exportTo(folder / "clean survey.txt", u"5"_s);
    EXPECT_EQ(readFile(folder / "clean survey.txt"), kTransectFile);
    EXPECT_TRUE(theSession().DataSaved);
    EXPECT_TRUE(main->close());
}

TEST_F(ImportToExport, WritesAnEmptyFileWhenNothingHasBeenImported) {
    exportTo(folder / "empty.txt");
    EXPECT_EQ(readFile(folder / "empty.txt"), "");
}

}  // namespace tessel
