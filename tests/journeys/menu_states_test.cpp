// SPDX-License-Identifier: GPL-3.0-or-later
// The states that the program goes through, and what can be chosen in each; and what the windows do to one
// another.
#include "journal/journal.h"
#include "plots/Chart2D.h"
#include "support/PlotWindow.h"
#include "support/RunningProgram.h"

namespace tessel {

namespace {

const char* const kFollowingItems[] = {
    "mnuSave",   "mnuInvokeIDE", "mnuIDEW",        "mnuRow",   "mnuData",    "mnuStat", "mnuDistance",
    "mnuGrid",   "mnuSigCorr",   "mnuHist",        "mnuClear", "mnuAdjust",  "mnuEL",   "mnuGridReading",
    "mnuRecord", "mnuSaveTable", "mnuCoordinates", "mnuTurns", "mnuSuspects"};

class MenuStates : public testing::Test, protected RunningProgram {
  protected:
    // Which of the items that follow the survey are enabled, in the order of kFollowingItems: "x" or ".".
    std::string enabled() const {
        std::string marks;
        for (const char* item : kFollowingItems)
            marks += main->menuItem(QString::fromLatin1(item))->isEnabled() ? 'x' : '.';
        return marks;
    }

    void importFixed(const std::string& bytes, int sites, int rejected, const QString& minDistance = u"3"_s) {
        writeFile(folder / "fixed.dat", bytes);
        expectTrimbleReport(sites, rejected);
        if (minDistance == u"0"_s) expectTooManyRows();
        importTrimbleFile(*main,
                          {folder / "fixed.dat", minDistance, {}, {1, 8}, {9, 16}, {17, 24}, {25, 32}});
    }
    void importNothing() { importFixed("no number in this line\n", 0, 1); }
    // Runs of sites 1 m apart, 10 m between runs.
    void importRuns(const std::vector<int>& runs, const QString& minDistance = u"3"_s) {
        std::string bytes;
        for (std::size_t run = 0; run < runs.size(); ++run)
            for (int k = 0; k < runs[run]; ++k) {
                char line[64];
                std::snprintf(line, sizeof line, "%8d%8d%8d%8d\n", k, int(run) * 10, 20 + k % 7, 30 + k % 5);
                bytes += line;
            }
        importFixed(bytes, std::accumulate(runs.begin(), runs.end(), 0), 0, minDistance);
    }
    void deletePoint() {
        clickPoint(controlAs<Chart2D>(*main, u"Chart2D3"_s), 1, 1);
        clickOn(*main, u"Command5"_s);
    }
};

}  // namespace

// The marks stand for: mnuSave, mnuInvokeIDE, mnuIDEW, mnuRow, mnuData, mnuStat, mnuDistance, mnuGrid,
// mnuSigCorr, mnuHist, mnuClear, mnuAdjust, mnuEL, mnuGridReading, mnuRecord, mnuSaveTable,
// mnuCoordinates, mnuTurns, mnuSuspects.
TEST_F(MenuStates, AreThoseOfTheTableOnAWalkThroughTheProgram) {
    EXPECT_EQ(enabled(), "x..................") << "at the start";
    importNothing();
    EXPECT_EQ(enabled(), "x..................") << "after an import of no site";
    importRuns({3, 1});
    EXPECT_EQ(enabled(), "xxxxxxxxxxxxxxxxxxx") << "after an import";
    importNothing();
    EXPECT_EQ(enabled(), "x..................") << "after another import of no site";

    writeFile(folder / "generic.txt", "0 0 20 2\n");
    expectGenericReport(1, 0);
    boxes.tell(u"Fatal Error! Initial row # not equal to 1. Input aborted."_s);
    importGeneric(folder / "generic.txt", 0);
    EXPECT_EQ(enabled(), "...................") << "after row numbers of no use";

    importRuns({260}, u"0"_s);  // each a row
    EXPECT_EQ(enabled(), "xxxxxxxxxxxxxxxxxxx") << "with more than 250 rows";
    findRows(u"3"_s);
    EXPECT_EQ(enabled(), "xxxxxxxxxxxxxxxxxxx") << "after finding the rows anew";

    importRuns({3, 1});
    chooseItem(*main, u"mnuX"_s);
    clickOn(*main, u"Command2"_s);
    deletePoint();
    EXPECT_EQ(enabled(), "xxx.....xxxxx.xxxxx") << "with fewer than two rows";
    clickOn(*main, u"Command4"_s);
    EXPECT_EQ(enabled(), "xxx.x...xxxxx.xxxxx") << "when the row plots are finished";
    findRows(u"0.5"_s);
    EXPECT_EQ(enabled(), "xxxxxxxxxxxxxxxxxxx") << "recalculated";

    findRows(u"3"_s);
    expectNoSitesLeft();
    deleteRow(1);
    EXPECT_EQ(theSurvey().NumSites, 0);
    EXPECT_EQ(enabled(), "...........xx......") << "with no sites left";
    importRuns({2});
    EXPECT_EQ(enabled(), "xxxxxxxxxxxxxxxxxxx") << "after the next import";
}

TEST_F(MenuStates, WithNoSitesLeftWhatIsStillEnabledAnswersWithAMessage) {
    importRuns({1});
    chooseItem(*main, u"mnuX"_s);
    deletePoint();
    clickOn(*main, u"Command4"_s);
    ASSERT_EQ(theSurvey().NumSites, 0);
    EXPECT_EQ(enabled(), "xxx.x...xxxxx.xxxxx");
    for (const QString& item : {u"mnuIDEW"_s, u"mnuData"_s, u"mnuAdjust"_s, u"mnuSigCorr"_s, u"mnuHist"_s,
                                u"mnuTurns"_s, u"mnuSuspects"_s, u"mnuSaveTable"_s, u"mnuCoordinates"_s}) {
        expectNoSitesLeft();
        chooseItem(*main, item);
        EXPECT_EQ(boxes.pending(), 0) << item.toStdString();
    }
    for (const QString& window : {u"frmClip"_s, u"frmDataEdit"_s, u"frmAdjustData"_s, u"frmHistForm"_s,
                                  u"frmTurns"_s, u"frmSuspects"_s})
        EXPECT_FALSE(isShown(window));
}

}  // namespace tessel
