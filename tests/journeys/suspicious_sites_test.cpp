// SPDX-License-Identifier: GPL-3.0-or-later
// Suspicious sites in the whole program: found, deleted, taken back.
#include "analysis/frmSuspects.h"
#include "journal/journal.h"
#include "plots/Chart2D.h"
#include "support/RunningProgram.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

Survey rowsWithSpikes() {
    std::vector<MadeSite> sites;
    for (int row = 1; row <= 3; ++row)
        for (int i = 0; i < 20; ++i)
            sites.push_back({i * 1.0, row * 30.0, 20 + i % 3 * 0.1, 30, row * 1.0});
    sites[10].em1 = sites[50].em1 = 99;
    return madeSurvey(sites);
}

const std::pair<QString, QString> kSearches[] = {{u"mnuTurns"_s, u"frmTurns"_s},
                                                 {u"mnuSuspects"_s, u"frmSuspects"_s}};

class SuspiciousSitesJourney : public testing::Test, protected RunningProgram {
  protected:
    SuspiciousSitesJourney() : RunningProgram(rowsWithSpikes()) {}

    frmSuspects& openSuspects() {
        chooseItem(*main, u"mnuSuspects"_s);
        return dynamic_cast<frmSuspects&>(shownWindow(u"frmSuspects"_s));
    }
    static QString status(const frmSuspects& window) { return window.lblSuspects->text(); }
};

}  // namespace

TEST_F(SuspiciousSitesJourney, AreDeletedAndTakenBackWhileTheWindowFollows) {
    chooseItem(*main, u"mnuGrid"_s);
    frmSuspects& window = openSuspects();
    EXPECT_EQ(&openSuspects(), &window) << "there is one";
    clickOn(window, u"chkSpikes"_s);
    boxes.ask(true, u"Delete the 2 ticked sites? The others stay."_s);
    clickOn(window, u"cmdDeleteSuspects"_s);
    EXPECT_EQ(theSurvey().NumSites, 58);
    EXPECT_EQ(status(window), u"No site is suspicious by these rules."_s);
    EXPECT_EQ(controlAs<Chart2D>(*main, u"Chart2D2"_s).pointCount(Chart2D::kData, 1), 19);
    EXPECT_EQ(main->mnuUndo->text(), u"&Undo: delete 2 suspicious sites"_s);
    chooseItem(*main, u"mnuUndo"_s);
    expectSameSurvey(theSurvey(), before);
    EXPECT_EQ(status(window), u"2 of 60 sites flagged, 2 of them ticked."_s);
}

TEST_F(SuspiciousSitesJourney, OfAllSitesLeaveAProgramWithoutOne) {
    frmSuspects& window = openSuspects();
    clickOn(window, u"chkLimits"_s);
    typeInto(window, u"txtLowest1"_s, u"500"_s);
    boxes.ask(true, u"Delete the 60 ticked sites? The others stay."_s);
    expectNoSitesLeft();
    clickOn(window, u"cmdDeleteSuspects"_s);
    EXPECT_FALSE(isShown(u"frmSuspects"_s));
    EXPECT_FALSE(main->mnuSuspects->isEnabled());
    EXPECT_FALSE(main->mnuGrid->isEnabled());
    chooseItem(*main, u"mnuUndo"_s);
    expectSameSurvey(theSurvey(), before);
}

TEST_F(SuspiciousSitesJourney, AndTurnsCloseTheirWindowsWhenAnotherSurveyTakesThePlaceOfTheirs) {
    const auto open = [this] {
        for (const auto& [item, window] : kSearches) {
            chooseItem(*main, item);
            EXPECT_TRUE(isShown(window));
        }
    };
    const auto expectClosed = [] {
        for (const auto& [item, window] : kSearches)
            EXPECT_FALSE(isShown(window)) << window.toStdString();
    };
    writeFile(folder / "other.txt", "0 0 20 1\n1 0 21 1\n2 0 22 1\n0 6 20 2\n");
    open();
    expectGenericReport(4, 0);
    importGeneric(folder / "other.txt", 0);
    expectClosed();
    open();
    chooseItem(*main, u"mnuUndo"_s);
    expectClosed();
    expectSameSurvey(theSurvey(), before);
}

}  // namespace tessel
