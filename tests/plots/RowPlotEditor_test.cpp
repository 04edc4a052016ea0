// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/RowPlotEditor.h"

#include "base/session.h"
#include "support/RowPlots.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

using Point = Chart2D::Point;
using Axis = Chart2D::Axis;

TEST_F(RowPlots, AreHiddenUntilTheEditorIsOpened) {
    EXPECT_FALSE(editor.isVisible());
    EXPECT_FALSE(profile.isVisible());
    EXPECT_FALSE(map.isVisible());
    EXPECT_FALSE(editor.EditorStarted);
}

TEST_F(RowPlots, HaveTheirTexts) {
    const auto plain = [](QString text) { return text.remove(u'&'); };
    EXPECT_EQ(editor.objectName(), u"Frame1"_s);
    EXPECT_EQ(plain(editor.title()), u"Plotting Options"_s);
    EXPECT_EQ(plain(editor.Option1->text()), u"Increment or Decrement Row Number"_s);
    EXPECT_EQ(plain(editor.Option2->text()), u"Specify a Row Number"_s);
    EXPECT_EQ(plain(editor.Command3->text()), u"Plot Row"_s);
    EXPECT_EQ(plain(editor.Command4->text()), u"Finished"_s);
    EXPECT_EQ(plain(editor.Command5->text()), u"Delete Site(s)"_s);
    EXPECT_EQ(plain(editor.Command6->text()), u"Print"_s);
}

TEST_F(RowPlots, OpenAtRowOneByX) {
    openByX(threeRowSurvey());
    EXPECT_TRUE(editor.isVisible());
    EXPECT_TRUE(editor.EditorStarted);
    EXPECT_TRUE(editor.PlotByX);
    EXPECT_FALSE(editor.PlotByY);
    expectRowShown(1);
    expectNothingSelected();
    expectSteps(false, true);
    EXPECT_TRUE(editor.Option1->isChecked());
    EXPECT_FALSE(editor.Command3->isEnabled());
    EXPECT_EQ(editor.Text1->text(), QString());
    EXPECT_EQ(profile.axisTitle(Axis::X), u"X (meters)"_s);
    EXPECT_EQ(profile.axisTitle(Axis::Y), u"ECa (mS/m)"_s);
    EXPECT_EQ(map.axisTitle(Axis::X), u"X (meters)"_s);
    EXPECT_EQ(map.axisTitle(Axis::Y), u"Y (meters)"_s);
    expectRange(profile, Axis::X, 98, 142);
    expectRange(profile, Axis::Y, 16.5, 58.5);
    expectRange(profile, Axis::Y2, 16.5, 58.5);
    expectRange(map, Axis::X, 98, 142);
    expectRange(map, Axis::Y, 9.9, 12.1);
    expectRange(map, Axis::Y2, 9.9, 12.1);
    EXPECT_EQ(main.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(RowPlots, OpenAtRowOneByYWithThePlanTurned) {
    openByY(threeRowSurvey());
    EXPECT_FALSE(editor.PlotByX);
    EXPECT_TRUE(editor.PlotByY);
    expectRowShown(1);
    EXPECT_EQ(profile.axisTitle(Axis::X), u"Y (meters)"_s);
    EXPECT_EQ(map.axisTitle(Axis::X), u"Y (meters)"_s);
    EXPECT_EQ(map.axisTitle(Axis::Y), u"X (meters)"_s);
    expectRange(profile, Axis::X, 9.9, 12.1);
    expectRange(map, Axis::X, 9.9, 12.1);
    expectRange(map, Axis::Y, 98, 142);
    EXPECT_EQ(thePlotLimits().PlotXMin, map.axisRange(Axis::X).minimum);
    EXPECT_EQ(thePlotLimits().PlotYMax, map.axisRange(Axis::Y).maximum);
}

TEST_F(RowPlots, ShowTheMapAboveTheProfile) {
    openByX(threeRowSurvey());
    QTest::qWait(1);
    EXPECT_LE(map.geometry().bottom(), profile.geometry().top());
}

TEST_F(RowPlots, StandOneBelowTheOtherPointByPoint) {
    Survey survey = threeRowSurvey();
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        survey.SiteData(kY, i) += 5512000;
    openByX(survey);
    QCoreApplication::processEvents();
    for (const double x : {100.0, 120.0, 140.0})
        EXPECT_EQ(profile.mapTo(&main, profile.dataToPixel(x, 20).toPoint()).x(),
                  map.mapTo(&main, map.dataToPixel(x, 5512010).toPoint()).x());
}

TEST_F(RowPlots, DrawOneSeriesWhereThereIsOneReading) {
    Survey survey = threeRowSurvey();
    survey.TwoEMColumns = false;
    openByX(survey);
    EXPECT_EQ(profile.seriesCount(Chart2D::kData), 1);
    expectRange(profile, Axis::Y, 19, 31);
    clickPoint(profile, 1, 2);
    EXPECT_EQ(profile.seriesCount(Chart2D::kHighlight), 1);
    EXPECT_TRUE(pointsOf(profile, Chart2D::kHighlight, 1) == std::vector<Point>({{110, 30}}));
}

TEST_F(RowPlots, FollowASurveyThatHasOneReadingLess) {
    openByX(threeRowSurvey());
    clickPoint(profile, 1, 2);
    Survey survey = threeRowSurvey();
    survey.TwoEMColumns = false;
    openByX(survey);
    EXPECT_EQ(profile.seriesCount(Chart2D::kData), 1);
    clickPoint(profile, 1, 3);
    EXPECT_EQ(selected(), std::vector<SiteIndex>{3});
    openByX(threeRowSurvey());
    expectRowShown(1);
    clickPoint(profile, 1, 3);
    EXPECT_TRUE(pointsOf(profile, Chart2D::kHighlight, 2) == std::vector<Point>({{120, 50}}));
}

TEST_F(RowPlots, OfMoreRowsThanCanBeCountedAreRefused) {
    std::vector<MadeSite> sites;
    for (int row = 1; row <= 250; ++row)
        sites.push_back({double(row), 0, 1, 1, row});
    Survey survey = madeSurvey(sites);
    survey.SiteData.resize(251);
    survey.SiteData(kRow, 250) = 251;
    survey.NumSites = 251;
    survey.NumRows = 251;
    boxes.tell(
        u"Subscript out of range\nNo more than 250 rows can be shown or edited. Choose Delete / Join / "
        u"Re-calculate Rows in the Edit menu and recalculate the row numbering with a larger distance."_s);
    openByX(survey);
    EXPECT_FALSE(editor.isVisible());
    EXPECT_FALSE(profile.isVisible());
    EXPECT_FALSE(editor.EditorStarted);
}

TEST_F(RowPlots, StepThroughTheRowsAndBack) {
    openByX(threeRowSurvey());
    click("Command2");
    expectRowShown(2);
    expectSteps(true, true);
    click("Command2");
    expectRowShown(3);
    expectSteps(true, false);
    click("Command1");
    expectRowShown(2);
    expectSteps(true, true);
    click("Command1");
    expectRowShown(1);
    expectSteps(false, true);
}

TEST_F(RowPlots, DrawARowOfOnePointWithinFourHundredMetres) {
    openByX(threeRowSurvey());
    click("Command2");
    expectRange(profile, Axis::X, -60, 340);
    expectRange(profile, Axis::Y, 32.5, 66.5);
    expectRange(map, Axis::X, -60, 340);
    expectRange(map, Axis::Y, -140, 260);
    EXPECT_EQ(map.headerText(), u"Sample Row Plot:  Row #2 (1 point)"_s);
}

namespace {

// How often a widget has been hidden.
class HideCount : public QObject {
  public:
    explicit HideCount(QWidget& widget) { widget.installEventFilter(this); }
    int hidden = 0;

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        hidden += event->type() == QEvent::Hide ? 1 : 0;
        return false;
    }
};

// How often the hourglass has come up on a window.
class HourglassCount : public QObject {
  public:
    explicit HourglassCount(QWidget& window) : window_(window) { window.installEventFilter(this); }
    int taken() { return std::exchange(shown_, 0); }

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::CursorChange && window_.cursor().shape() == Qt::WaitCursor) ++shown_;
        return false;
    }

  private:
    QWidget& window_;
    int shown_ = 0;
};

}  // namespace

TEST_F(RowPlots, HideTheirFrameForAMomentWhenNoNumberWasTyped) {
    openByX(threeRowSurvey());
    click("Option2");
    const HideCount frame(editor);
    boxes.tell(u"Invalid Input: row number out of range"_s);
    typeRow(u"9"_s);
    click("Command3");
    EXPECT_EQ(frame.hidden, 0);
    boxes.tell(u"Invalid Input: you have to enter a numeric value"_s);
    typeRow(u"nine"_s);
    click("Command3");
    EXPECT_EQ(frame.hidden, 1);
    EXPECT_TRUE(editor.isVisible());
}

TEST_F(RowPlots, ShowTheHourglassWhileTheyAreDrawnOrCut) {
    HourglassCount hourglass(main);
    const auto expectHourglass = [&](const char* act) {
        EXPECT_GE(hourglass.taken(), 1) << act;
        EXPECT_EQ(main.cursor().shape(), Qt::ArrowCursor) << act;
    };
    openByX(threeRowSurvey());
    expectHourglass("opening by X");
    main.mnuY->trigger();
    expectHourglass("opening by Y");
    click("Command2");
    expectHourglass("stepping forward");
    click("Command1");
    expectHourglass("stepping back");
    typeRow(u"3"_s);
    click("Command3");
    expectHourglass("plotting a row");
    clickPoint(map, 1, 2);
    click("Command5");
    expectHourglass("deleting");
}

TEST_F(RowPlots, StepByPageKeysFromAnywhereInTheEditor) {
    openByX(threeRowSurvey());
    QTest::keyClick(&profile, Qt::Key_PageDown);
    expectRowShown(2);
    QTest::keyClick(&map, Qt::Key_PageDown);
    expectRowShown(3);
    QTest::keyClick(&map, Qt::Key_PageDown);
    expectRowShown(3);
    QTest::keyClick(editor.Text1, Qt::Key_PageUp);
    QTest::keyClick(editor.Command4, Qt::Key_PageUp);
    expectRowShown(1);
    QTest::keyClick(&main, Qt::Key_PageUp);
    expectRowShown(1);
    QTest::keyClick(&main, Qt::Key_PageDown);
    expectRowShown(2);
}

TEST_F(RowPlots, StepButtonsAreNamedForThoseWhoCannotSeeThem) {
    EXPECT_EQ(editor.Command1->accessibleName(), u"Previous row"_s);
    EXPECT_EQ(editor.Command2->accessibleName(), u"Next row"_s);
}

TEST_F(RowPlots, PlotTheRowThatWasTyped) {
    openByX(threeRowSurvey());
    click("Option2");
    EXPECT_TRUE(editor.Command3->isEnabled());
    EXPECT_TRUE(editor.Text1->hasFocus());
    typeRow(u"3"_s);
    click("Command3");
    expectRowShown(3);
    expectSteps(true, false);
    EXPECT_FALSE(editor.Command5->isEnabled());
    EXPECT_TRUE(editor.Command6->isEnabled());
    click("Option1");
    EXPECT_FALSE(editor.Command3->isEnabled());
}

TEST_F(RowPlots, PlotTheRowThatWasTypedOnEnter) {
    openByX(threeRowSurvey());
    typeRow(u"2"_s);
    EXPECT_TRUE(editor.Option2->isChecked());
    QTest::keyClick(editor.Text1, Qt::Key_Return);
    expectRowShown(2);
    expectSteps(true, true);
}

TEST_F(RowPlots, SayWhatIsWrongWithATypedRowNumber) {
    openByX(threeRowSurvey());
    click("Command2");
    clickPoint(profile, 1, 1);
    click("Option2");
    const auto expectUnchanged = [this] {
        expectRowShown(2);
        EXPECT_TRUE(editor.isVisible());
        EXPECT_EQ(selected(), std::vector<SiteIndex>{1});
    };
    boxes.tell(u"Invalid Input: you have to enter a numeric value"_s);
    click("Command3");
    expectUnchanged();
    boxes.tell(u"Invalid Input: you have to enter a numeric value"_s);
    typeRow(u"two"_s);
    click("Command3");
    expectUnchanged();
    for (const QString& number : {u"0"_s, u"4"_s, u"-1"_s, u"1e9"_s}) {
        boxes.tell(u"Invalid Input: row number out of range"_s);
        typeRow(number);
        click("Command3");
        expectUnchanged();
    }
    EXPECT_EQ(boxes.pending(), 0);
}

TEST_F(RowPlots, CloseWithFinishedAndOpenAgainAtRowOne) {
    openByX(threeRowSurvey());
    click("Command2");
    clickPoint(profile, 1, 1);
    main.menuItem(u"mnuData"_s)->setEnabled(false);
    click("Command4");
    EXPECT_FALSE(editor.isVisible());
    EXPECT_FALSE(profile.isVisible());
    EXPECT_FALSE(map.isVisible());
    EXPECT_FALSE(editor.EditorStarted);
    EXPECT_TRUE(main.menuItem(u"mnuData"_s)->isEnabled());
    main.mnuX->trigger();
    expectRowShown(1);
    expectNothingSelected();
    EXPECT_TRUE(editor.Command6->isEnabled());
}

TEST_F(RowPlots, EndWhenTheMainWindowHidesItsPlots) {
    openByX(threeRowSurvey());
    clickPoint(profile, 1, 1);
    main.mnuClear->trigger();
    EXPECT_FALSE(editor.isVisible());
    EXPECT_FALSE(profile.isVisible());
    EXPECT_FALSE(editor.EditorStarted);
    EXPECT_EQ(editor.selection().SelCount, 0);
    QTest::keyClick(&main, Qt::Key_PageDown);
    EXPECT_FALSE(profile.isVisible());
}

TEST_F(RowPlots, OfferHelpByButtonAndByKey) {
    openByX(threeRowSurvey());
    theSession().AppDir = "/nowhere";
    const auto expectHelp = [this] {
        EXPECT_EQ(boxes.pending(), 0);
        boxes.tell(
            u"Warning!  File resource error.  VARN can not find the following file:\n"
            u"/nowhere/helpdocs/hdoc114.rtf"_s);
    };
    expectHelp();
    click("cmdHelp");
    expectHelp();
    QTest::keyClick(&map, Qt::Key_F1);
    expectHelp();
    QTest::keyClick(editor.Text1, Qt::Key_F1);
    EXPECT_EQ(boxes.pending(), 0);
    theSession() = Session{};
}

}  // namespace tessel
