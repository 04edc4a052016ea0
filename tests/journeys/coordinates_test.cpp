// SPDX-License-Identifier: GPL-3.0-or-later
// From degrees to metres through the real windows.
#include "journal/journal.h"
#include "support/RunningProgram.h"

namespace tessel {

namespace {

class CoordinatesJourney : public testing::Test, protected RunningProgram {
  protected:
    void importDegrees() {
        writeFile(
            folder / "field.csv",
            "-2.3,52.4,20\n-2.3,52.40001,21\n-2.3,52.40002,22\n-2.2999,52.40002,23\n-2.2999,52.40001,24\n");
        expectGenericReport(5, 0);
        importGeneric(folder / "field.csv", 4);
    }
    void convert() {
        chooseItem(*main, u"mnuCoordinates"_s);
        clickOn(shownWindow(u"frmCoordinates"_s), u"cmdApply"_s);
        waitUntilClosed(u"frmCoordinates"_s);
    }
    QString summaryLine(const QString& name) const {
        const auto* const label = main->findChild<QLabel*>(u"lblSummary"_s + name);
        return label ? label->text() : QString();
    }
};

}  // namespace

TEST_F(CoordinatesJourney, TheSummaryPointsToTheConversionAndFollowsIt) {
    EXPECT_FALSE(main->mnuCoordinates->isEnabled());
    importDegrees();
    EXPECT_GE(summaryLine(u"Warning"_s).indexOf(u"“Coordinates” in the Edit menu"_s), 0);
    convert();
    EXPECT_EQ(summaryLine(u"Positions"_s), u"EPSG:32630"_s);
    EXPECT_EQ(summaryLine(u"Warning"_s).indexOf(u"degrees"_s), -1);
    findRows(u"3"_s);
    EXPECT_EQ(theSurvey().NumRows, 2);
}

TEST_F(CoordinatesJourney, TheConversionIsTakenBackAndANewImportKnowsOfNoSystem) {
    importDegrees();
    const std::vector<MadeSite> degrees = sitesIn(theSurvey());
    convert();
    chooseItem(*main, u"mnuUndo"_s);
    EXPECT_EQ(sitesIn(theSurvey()), degrees);
    EXPECT_EQ(theSurvey().PositionsCRS, 0);
    chooseItem(*main, u"mnuRedo"_s);
    EXPECT_EQ(theSurvey().PositionsCRS, 32630);
    importDegrees();
    EXPECT_EQ(theSurvey().PositionsCRS, 0);
}

TEST_F(CoordinatesJourney, ATableHasDegreesAfterIt) {
    importDegrees();
    convert();
    saveTable(folder / "table.csv", {u"chkLongitude"_s, u"chkLatitude"_s, u"chkX"_s, u"chkY"_s, u"chkRow"_s});
    const std::string text = readFile(folder / "table.csv");
    double longitude = 0, latitude = 0;
    ASSERT_EQ(std::sscanf(text.c_str() + text.find('\n'), "\n%lf,%lf,20", &longitude, &latitude), 2) << text;
    EXPECT_NEAR(longitude, -2.3, 1e-9);
    EXPECT_NEAR(latitude, 52.4, 1e-9);
}

}  // namespace tessel
