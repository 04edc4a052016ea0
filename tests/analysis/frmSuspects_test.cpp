// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmSuspects.h"

#include "base/palette16.h"
#include "desktop/CaptionColour.h"
#include "journal/journal.h"
#include "support/ExpectedBoxes.h"
#include "support/Pixels.h"
#include "support/UserDriver.h"
#include "support/made_survey.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

// Two rows of 20 quiet sites; site 8 is a spike, site 15 repeats the position before it, site 30 is lost.
Survey faultySurvey() {
    std::vector<MadeSite> sites;
    for (int i = 0; i < 40; ++i)
        sites.push_back(
            {500.0 + i % 20, i < 20 ? 700.0 : 705.0, 20 + i % 3 * 0.1, 30 + i % 4 * 0.1, i < 20 ? 1.0 : 2.0});
    sites[7].em1 = 90;
    sites[14].x = sites[13].x;
    sites[29].x = sites[29].y = 0;
    return madeSurvey(sites);
}

class SuspectsWindow : public testing::Test {
  protected:
    SuspectsWindow() { open(faultySurvey()); }
    void open(const Survey& survey) {
        surveyUnderTest() = survey;
        window = std::make_unique<frmSuspects>();
        window->show();
    }
    QAbstractItemModel& table() const { return *window->tblSuspects->model(); }
    QString cell(int line, int column) const { return table().index(line, column).data().toString(); }
    qsizetype flaggedOnMap() const { return window->mapSuspects->pointCount(Chart2D::kHighlight, 1); }
    void click(int line, int column) {
        const QRect place = window->tblSuspects->visualRect(table().index(line, column));
        QTest::mouseClick(window->tblSuspects->viewport(), Qt::LeftButton, {},
                          column == 0 ? place.topLeft() + QPoint(10, place.height() / 2) : place.center());
    }

    ExpectedBoxes boxes;
    std::unique_ptr<frmSuspects> window;
};

}  // namespace

TEST_F(SuspectsWindow, OpensWithoutARuleAndWithAllSitesOnTheMap) {
    EXPECT_EQ(window->mapSuspects->pointCount(Chart2D::kData, 1), 40);
    EXPECT_EQ(flaggedOnMap(), 0);
    EXPECT_FALSE(window->cmdDeleteSuspects->isEnabled());
    EXPECT_FALSE(window->barSearch->isVisible());
    EXPECT_FALSE(window->cmdCancel->isVisible());
    EXPECT_EQ(window->txtJump->text(), u"10"_s);
}

TEST_F(SuspectsWindow, ShowsWhatEachRuleFlagsAsItIsChosen) {
    window->chkSpikes->click();
    EXPECT_EQ(window->lblCountSpikes->text(), u"1"_s);
    EXPECT_EQ(window->lblCountFar->text(), QString());
    window->chkFar->click();
    window->chkRepeated->click();
    EXPECT_EQ(window->lblCountFar->text(), u"1"_s);
    EXPECT_EQ(window->lblSuspects->text(), u"3 of 40 sites flagged, 3 of them ticked."_s);
    EXPECT_EQ(flaggedOnMap(), 3);
    ASSERT_EQ(table().rowCount(), 3);
    const QStringList header{u"Site"_s, u"Row"_s, u"X"_s, u"Y"_s, u"EM1"_s, u"EM2"_s, u"Rules"_s};
    const QStringList spike{u"1008"_s, u"1"_s, u"507.00"_s, u"700.00"_s, u"90.00"_s, u"30.30"_s, u"spike"_s};
    for (int column = 0; column < 7; ++column) {
        EXPECT_EQ(table().headerData(column, Qt::Horizontal).toString(), header[column]);
        EXPECT_EQ(cell(0, column), spike[column]);
    }
    EXPECT_EQ(cell(2, 6), u"far away"_s);
    window->chkSpikes->click();
    EXPECT_EQ(table().rowCount(), 2);
    EXPECT_EQ(window->lblCountSpikes->text(), QString());
}

TEST_F(SuspectsWindow, FollowsEveryValueThatIsTyped) {
    window->chkLimits->click();
    EXPECT_EQ(window->lblSuspects->text(), u"No site is suspicious by these rules."_s);
    typeInto(*window, u"txtHighest1"_s, u"80"_s);
    EXPECT_EQ(cell(0, 0), u"1008"_s);
    window->chkLimits->click();
    window->chkRepeated->click();
    EXPECT_EQ(cell(0, 0), u"1015"_s);
    pickItem(*window, u"cboRepeated"_s, 1);
    EXPECT_EQ(cell(0, 0), u"1014"_s);
}

TEST_F(SuspectsWindow, SaysWhichValueOfARuleInUseCannotBeTaken) {
    window->chkRepeated->click();
    typeInto(*window, u"txtSpike"_s, u"0"_s);
    EXPECT_EQ(table().rowCount(), 1) << "no rule asks for it";
    window->chkSpikes->click();
    EXPECT_EQ(window->lblSuspects->text(), u"Threshold of spikes: type a number above 0."_s);
    EXPECT_EQ(inkOf(*window->lblSuspects), captionColour(kWarningColour, *window->lblSuspects));
    EXPECT_EQ(table().rowCount(), 0);
    EXPECT_FALSE(window->cmdDeleteSuspects->isEnabled());
    typeInto(*window, u"txtSpike"_s, u"4"_s);
    EXPECT_EQ(table().rowCount(), 2);
    for (const QString& text : {u"2.5"_s, u"1"_s, u"10001"_s, u""_s}) {
        window->txtNeighbours->setText(text + u'x');
        QTest::keyClick(window->txtNeighbours, Qt::Key_Backspace);
        EXPECT_EQ(window->lblSuspects->text(),
                  u"Neighbours on each side: type a whole number from 2 to 10000."_s);
    }
}

TEST_F(SuspectsWindow, SortsByAnyColumnWithTheKeyboard) {
    window->chkSpikes->click();
    window->chkFar->click();
    ASSERT_EQ(table().rowCount(), 2);
    const auto sortBy = [this](const QString& item) {
        QContextMenuEvent asked(QContextMenuEvent::Keyboard, {}, window->tblSuspects->mapToGlobal(QPoint()));
        QApplication::sendEvent(window->tblSuspects, &asked);
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        ASSERT_EQ(menu->actions().size(), table().columnCount());
        do
            QTest::keyClick(menu, Qt::Key_Down);
        while (menu->activeAction()->text() != item);
        QTest::keyClick(menu, Qt::Key_Return);
    };
    sortBy(u"Sort by EM1"_s);
    EXPECT_EQ(cell(1, 4), u"90.00"_s);
    sortBy(u"Sort by EM1"_s);
    EXPECT_EQ(cell(0, 4), u"90.00"_s);
    sortBy(u"Sort by Site"_s);
    EXPECT_EQ(cell(0, 0), u"1008"_s);
}

TEST_F(SuspectsWindow, SortsByTheHeadingThatIsClicked) {
    for (QCheckBox* rule : {window->chkSpikes, window->chkFar, window->chkRepeated})
        rule->click();
    window->tblSuspects->sortByColumn(4, Qt::DescendingOrder);
    EXPECT_EQ(cell(0, 0), u"1008"_s);
    window->tblSuspects->sortByColumn(2, Qt::AscendingOrder);
    EXPECT_EQ(cell(0, 0), u"1030"_s);
    window->chkSpikes->click();
    EXPECT_EQ(cell(0, 0), u"1030"_s) << "the order stays";
}

TEST_F(SuspectsWindow, ShowsOnTheMapTheSiteOfTheLineThatIsClicked) {
    window->chkSpikes->click();
    click(0, 4);
    ASSERT_EQ(window->mapSuspects->pointCount(Chart2D::kHighlight, 2), 1);
    EXPECT_EQ(window->mapSuspects->point(Chart2D::kHighlight, 2, 1), (Chart2D::Point{507, 700}));
    EXPECT_EQ(window->mapSuspects->footerText(),
              u"Row #1, Site # 1008, X = 507.00, Y = 700.00, EM1 = 90.00, EM2 = 30.30: spike"_s);
    window->chkSpikes->click();
    EXPECT_EQ(window->mapSuspects->pointCount(Chart2D::kHighlight, 2), 0);
}

TEST_F(SuspectsWindow, FindsInTheTableTheSiteThatIsClickedOnTheMap) {
    Survey survey = faultySurvey();
    survey.SiteData(kX, 29) = 509;
    survey.SiteData(kY, 29) = 705;
    open(survey);
    window->chkSpikes->click();
    window->chkRepeated->click();
    const QPoint pixel = window->mapSuspects->dataToPixel(513, 700).toPoint();
    QTest::mouseClick(window->mapSuspects, Qt::LeftButton, {}, pixel);
    EXPECT_EQ(window->tblSuspects->currentIndex().row(), 1);
    window->tblSuspects->sortByColumn(0, Qt::DescendingOrder);
    QTest::mouseClick(window->mapSuspects, Qt::LeftButton, {}, pixel);
    EXPECT_EQ(cell(window->tblSuspects->currentIndex().row(), 0), u"1015"_s) << "in whatever order";
    QTest::mouseMove(window->mapSuspects, pixel - QPoint(40, 40));
    QTest::mouseMove(window->mapSuspects, window->mapSuspects->dataToPixel(503, 700).toPoint());
    EXPECT_EQ(window->mapSuspects->footerText(),
              u"Row #1, Site # 1004, X = 503.00, Y = 700.00, EM1 = 20.00, EM2 = 30.30"_s);
}

TEST_F(SuspectsWindow, ColoursTheMapByAReading) {
    EXPECT_FALSE(window->scaleSuspects->isVisible());
    pickItem(*window, u"cboColours"_s, 2);
    EXPECT_TRUE(window->scaleSuspects->isVisible());
    EXPECT_EQ(window->scaleSuspects->title(), u"2nd EM reading (mS/m)"_s);
    EXPECT_EQ(window->mapSuspects->seriesStyle(Chart2D::kHighlight, 1).symbol, ChartSymbol::kRing)
        << "a disc would hide the colour, and be one among them for many eyes";
    pickItem(*window, u"cboColours"_s, 0);
    EXPECT_FALSE(window->scaleSuspects->isVisible());
    EXPECT_EQ(window->mapSuspects->seriesStyle(Chart2D::kHighlight, 1).symbol, ChartSymbol::kDisc);
}

TEST_F(SuspectsWindow, FitsAScreenOf800x600) {
    Survey survey = faultySurvey();
    survey.SiteData(kX, 3) = 5806585.25;
    survey.SiteData(kEM1, 3) = 1234.5;
    open(survey);
    pickItem(*window, u"cboColours"_s, 1);
    window->resize(10, 10);
    QCoreApplication::processEvents();
    // The desktop needs some for the frame and for itself.
    EXPECT_LE(window->width(), 760);
    EXPECT_LE(window->height(), 540);
    EXPECT_GE(window->mapSuspects->width(), 200);
}

TEST_F(SuspectsWindow, KeepsTicksThatWereTakenAwayWhenAnotherRuleIsChosen) {
    window->chkSpikes->click();
    window->chkRepeated->click();
    click(0, 0);
    EXPECT_EQ(table().index(0, 0).data(Qt::CheckStateRole), Qt::Unchecked);
    EXPECT_EQ(window->lblSuspects->text(), u"2 of 40 sites flagged, 1 of them ticked."_s);
    window->chkFar->click();
    EXPECT_EQ(window->lblSuspects->text(), u"3 of 40 sites flagged, 2 of them ticked."_s);
    EXPECT_EQ(table().index(0, 0).data(Qt::CheckStateRole), Qt::Unchecked);
    window->tblSuspects->selectAll();
    QTest::keyClick(window->tblSuspects, Qt::Key_Space);
    EXPECT_EQ(window->lblSuspects->text(), u"3 of 40 sites flagged, 3 of them ticked."_s);
    QTest::keyClick(window->tblSuspects, Qt::Key_Space);
    EXPECT_FALSE(window->cmdDeleteSuspects->isEnabled());
}

TEST_F(SuspectsWindow, DeletesTheTickedSitesAsOneActThatNamesTheRules) {
    const Survey before = theSurvey();
    QSignalSpy changed(window.get(), &frmSuspects::surveyChanged);
    for (QCheckBox* rule : {window->chkSpikes, window->chkFar, window->chkRepeated})
        rule->click();
    click(0, 0);
    const std::size_t acts = theJournal().position();
    boxes.ask(false, u"Delete the 2 ticked sites? The others stay."_s);
    window->cmdDeleteSuspects->click();
    EXPECT_EQ(theSurvey().NumSites, 40);
    boxes.ask(true, u"Delete the 2 ticked sites? The others stay."_s);
    window->cmdDeleteSuspects->click();
    EXPECT_EQ(theSurvey().NumSites, 38);
    EXPECT_EQ(theSurvey().SiteID[7], 1008) << "its tick was taken away";
    EXPECT_EQ(changed.count(), 1);
    ASSERT_EQ(theJournal().position(), acts + 1);
    const Act& act = theJournal().act(acts);
    EXPECT_EQ(act.words, "Deleted 2 suspicious sites");
    ASSERT_EQ(act.parameters.size(), 4U);
    EXPECT_EQ(act.parameters[0].first, "spikes along the row");
    EXPECT_EQ(act.parameters[3].first, "flagged sites that were kept");
    window->followSurvey();
    EXPECT_EQ(window->lblSuspects->text(), u"1 of 38 sites flagged, 1 of them ticked."_s);
    theJournal().goTo(acts);
    expectSameSurvey(theSurvey(), before);
}

TEST_F(SuspectsWindow, DeletesAllSitesLikeEveryOtherWindow) {
    QSignalSpy none(window.get(), &frmSuspects::noSitesLeft);
    window->chkLimits->click();
    typeInto(*window, u"txtLowest1"_s, u"200"_s);
    EXPECT_EQ(window->lblSuspects->text(), u"40 of 40 sites flagged, 40 of them ticked."_s);
    boxes.ask(true, u"Delete the 40 ticked sites? The others stay."_s);
    boxes.tell(u"There is no more point left in the file!"_s);
    window->cmdDeleteSuspects->click();
    EXPECT_EQ(theSurvey().NumSites, 0);
    EXPECT_EQ(theSurvey().NumRows, 0);
    EXPECT_EQ(none.count(), 1);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(SuspectsWindow, LeavesOutTheSecondReadingWhereThereIsNone) {
    Survey survey = faultySurvey();
    survey.TwoEMColumns = false;
    open(survey);
    EXPECT_FALSE(window->txtLowest2->isVisible());
    EXPECT_FALSE(window->chkApart->isEnabled());
    EXPECT_EQ(window->cboColours->count(), 2);
    window->chkSpikes->click();
    EXPECT_EQ(table().columnCount(), 6);
    EXPECT_EQ(cell(0, 5), u"spike"_s);
    surveyUnderTest() = faultySurvey();
    window->followSurvey();
    EXPECT_TRUE(window->txtLowest2->isVisible());
    EXPECT_EQ(window->cboColours->count(), 3);
    EXPECT_EQ(table().columnCount(), 7);
}

TEST_F(SuspectsWindow, LivesWithOneSiteAndWithNoRows) {
    Survey one = madeSurvey({{5, 5, 1, 2, 1}});
    one.NumRows = one.RowIndex = 0;
    open(one);
    for (QCheckBox* rule : window->frameRules->findChildren<QCheckBox*>())
        rule->click();
    EXPECT_EQ(window->lblSuspects->text(), u"No site is suspicious by these rules."_s);
    typeInto(*window, u"txtLowest1"_s, u"3"_s);
    boxes.ask(true, u"Delete the ticked site? The others stay."_s);
    boxes.tell(u"There is no more point left in the file!"_s);
    window->cmdDeleteSuspects->click();
    EXPECT_EQ(theSurvey().NumSites, 0);
}

namespace {

Survey largeSurvey(int sites) {
    std::vector<MadeSite> made;
    for (int i = 0; i < sites; ++i)
        made.push_back({i % 300 + 1.0, i / 300 + 1.0, 20 + i % 7 * 0.1, 30 + i % 5 * 0.1, 1});
    made[100].em1 = 90;
    return madeSurvey(made);
}

}  // namespace

TEST_F(SuspectsWindow, LooksAtALargeSurveyBesideWhatTheUserDoes) {
    open(largeSurvey(30000));
    window->chkSpikes->click();
    EXPECT_TRUE(window->isSearching());
    EXPECT_FALSE(window->cmdDeleteSuspects->isEnabled());
    window->chkLimits->click();
    typeInto(*window, u"txtHighest1"_s, u"85"_s);
    Q_EMIT static_cast<SuspectsModel*>(&table())->ticksChanged();
    EXPECT_FALSE(window->cmdDeleteSuspects->isEnabled()) << "what is shown was found by other rules";
    ASSERT_TRUE(QTest::qWaitFor([this] { return !window->isSearching(); }));
    EXPECT_EQ(window->lblSuspects->text(), u"1 of 30000 sites flagged, 1 of them ticked."_s);
    EXPECT_EQ(cell(0, 6), u"outside limits, spike"_s) << "of several searches the last one counts";
    EXPECT_FALSE(window->barSearch->isVisible());
}

TEST_F(SuspectsWindow, TellsOfALongSearchAndGivesItUpWhenTold) {
    open(largeSurvey(100000));
    const auto searchForLong = [this] {
        window->chkSpikes->setChecked(false);
        typeInto(*window, u"txtNeighbours"_s, u"10000"_s);
        window->chkSpikes->click();
        return QTest::qWaitFor([this] { return window->cmdCancel->isVisible(); });
    };
    const auto expectGivenUp = [this] {
        EXPECT_FALSE(window->isSearching());
        EXPECT_FALSE(window->cmdCancel->isVisible());
        EXPECT_FALSE(window->barSearch->isVisible());
        EXPECT_EQ(window->lblSuspects->text(),
                  u"The search was given up. Change a value, or a rule, to search again."_s);
        EXPECT_EQ(window->lblCountSpikes->text(), QString()) << "nobody knows how many";
        EXPECT_FALSE(window->cmdDeleteSuspects->isEnabled());
        EXPECT_TRUE(window->isVisible());
    };
    ASSERT_TRUE(searchForLong());
    EXPECT_TRUE(window->barSearch->isVisible());
    EXPECT_EQ(window->lblSuspects->text(), u"Looking at 100000 sites ..."_s);
    const int before = window->barSearch->value();
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->barSearch->value() > before; }));
    QTest::mouseClick(window->cmdCancel, Qt::LeftButton);
    expectGivenUp();
    ASSERT_TRUE(searchForLong());
    QTest::keyClick(window.get(), Qt::Key_Escape);
    expectGivenUp();
    typeInto(*window, u"txtNeighbours"_s, u"5"_s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !window->isSearching(); }));
    EXPECT_EQ(window->lblSuspects->text(), u"1 of 100000 sites flagged, 1 of them ticked."_s);
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(SuspectsWindow, OpensAtOnceOnALargeSurveyAsOnASmallOne) {
    open(largeSurvey(30000));
    EXPECT_FALSE(window->isSearching()) << "no rule asks for it";
    EXPECT_FALSE(window->cmdCancel->isVisible());
    EXPECT_FALSE(window->barSearch->isVisible());
    window->chkAround->click();
    EXPECT_TRUE(window->isSearching());
    EXPECT_FALSE(window->cmdCancel->isVisible()) << "it may take a moment only";
    window->chkAround->click();
    EXPECT_FALSE(window->isSearching());
    EXPECT_EQ(table().rowCount(), 0);
}

TEST_F(SuspectsWindow, LooksAnewWhereTheSurveyChangesDuringASearch) {
    open(largeSurvey(30000));
    window->chkAround->click();
    EXPECT_TRUE(window->isSearching());
    surveyUnderTest() = largeSurvey(25000);
    surveyUnderTest().SiteData(kEM1, 24000) = 90;
    window->followSurvey();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !window->isSearching(); }));
    EXPECT_EQ(window->lblSuspects->text(), u"2 of 25000 sites flagged, 2 of them ticked."_s);
}

TEST_F(SuspectsWindow, IsGoneAtOnceWhenItIsClosedDuringASearch) {
    open(largeSurvey(30000));
    window->chkAround->click();
    EXPECT_TRUE(window->isSearching());
    window.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(theSurvey().NumSites, 30000);
}

}  // namespace tessel
