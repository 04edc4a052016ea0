// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/RowPlotEditor.h"

#include "support/RowPlots.h"

namespace tessel {

using Point = Chart2D::Point;
using Axis = Chart2D::Axis;

TEST_F(OpenRowPlots, OpenAtRowOneByX) {
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
    EXPECT_EQ(profile.axisTitle(Axis::kX), u"X (meters)"_s);
    EXPECT_EQ(profile.axisTitle(Axis::kY), u"ECa (mS/m)"_s);
    EXPECT_EQ(map.axisTitle(Axis::kX), u"X (meters)"_s);
    EXPECT_EQ(map.axisTitle(Axis::kY), u"Y (meters)"_s);
    expectRange(profile, Axis::kX, 98, 142);
    expectRange(profile, Axis::kY, 16.5, 58.5);
    expectRange(profile, Axis::kY2, 16.5, 58.5);
    expectRange(map, Axis::kX, 98, 142);
    expectRange(map, Axis::kY, 9.9, 12.1);
    expectRange(map, Axis::kY2, 9.9, 12.1);
}

TEST_F(RowPlots, OpenAtRowOneByYWithThePlanTurned) {
    openByY(threeRowSurvey());
    EXPECT_FALSE(editor.PlotByX);
    EXPECT_TRUE(editor.PlotByY);
    expectRowShown(1);
    EXPECT_EQ(profile.axisTitle(Axis::kX), u"Y (meters)"_s);
    EXPECT_EQ(map.axisTitle(Axis::kX), u"Y (meters)"_s);
    EXPECT_EQ(map.axisTitle(Axis::kY), u"X (meters)"_s);
    expectRange(profile, Axis::kX, 9.9, 12.1);
    expectRange(map, Axis::kX, 9.9, 12.1);
    expectRange(map, Axis::kY, 98, 142);
    EXPECT_EQ(thePlotLimits().PlotXMin, map.axisRange(Axis::kX).from);
    EXPECT_EQ(thePlotLimits().PlotYMax, map.axisRange(Axis::kY).to);
}

TEST_F(OpenRowPlots, ShowTheMapAboveTheProfile) {
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
    expectRange(profile, Axis::kY, 19, 31);
    clickPoint(profile, 1, 2);
    EXPECT_EQ(profile.seriesCount(Chart2D::kHighlight), 1);
    EXPECT_TRUE(pointsOf(profile, Chart2D::kHighlight, 1) == std::vector<Point>({{110, 30}}));
}

TEST_F(RowPlots, OfMoreRowsThanCanBeCountedAreRefused) {
    Survey survey = longRowSurvey(251);
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        survey.SiteData(kRow, i) = static_cast<double>(i + 1);
    survey.NumRows = 251;
    boxes.tell(
        u"Subscript out of range\nNo more than 250 rows can be shown or edited. Choose Delete / Join / "
        u"Re-calculate Rows in the Edit menu and recalculate the row numbering with a larger distance."_s);
    openByX(survey);
    EXPECT_FALSE(editor.isVisible());
    EXPECT_FALSE(profile.isVisible());
    EXPECT_FALSE(editor.EditorStarted);
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

TEST_F(OpenRowPlots, SayWhatIsWrongWithATypedRowAndHideTheirFrameForAMomentWhereItIsNoNumber) {
    click("Command2");
    clickPoint(profile, 1, 1);
    click("Option2");
    const HideCount frame(editor);
    for (const QString& number : {u""_s, u"two"_s, u"0"_s, u"4"_s, u"-1"_s, u"1e9"_s}) {
        const bool isNumber = !number.isEmpty() && number != u"two"_s;
        boxes.tell(isNumber ? u"Invalid Input: row number out of range"_s
                            : u"Invalid Input: you have to enter a numeric value"_s);
        const int before = frame.hidden;
        typeRow(number);
        click("Command3");
        EXPECT_EQ(frame.hidden - before, isNumber ? 0 : 1) << "the frame is hidden for a moment";
        expectRowShown(2);
        EXPECT_TRUE(editor.isVisible());
        EXPECT_EQ(selected(), std::vector<SiteIndex>{1});
    }
}

}  // namespace tessel
