#include "plots/RowPlotEditor.h"

#include "app/FileDialogs.h"
#include "app/Guarded.h"
#include "app/Printing.h"
#include "app/frmMain.h"
#include "rows/row_detection.h"
#include "support/ExpectedBoxes.h"
#include "support/PlotWindow.h"
#include "support/literal_deletion.h"
#include "support/made_survey.h"
#include "support/temporary_folder.h"

#include <QFile>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Point = Chart2D::Point;
using Axis = Chart2D::Axis;

// Three rows along X: five sites, one site, four sites driven back.
Survey threeRows() {
    return madeSurvey({{100, 10, 20, 40, 1},
                       {110, 11, 30, 45, 1},
                       {120, 10, 25, 50, 1},
                       {130, 12, 28, 55, 1},
                       {140, 10, 22, 48, 1},
                       {140, 60, 33, 66, 2},
                       {160, 110, 12, 60, 3},
                       {150, 111, 18, 62, 3},
                       {140, 112, 15, 64, 3},
                       {130, 113, 11, 61, 3}});
}

Survey longRow(int sites) {
    std::vector<MadeSite> row;
    for (int i = 0; i < sites; ++i)
        row.push_back({double(i), 5, double(i % 7), double(10 + i % 5), 1});
    return madeSurvey(row);
}

class RowPlots : public testing::Test {
  protected:
    RowPlots() : editor(*new RowPlotEditor(main)), profile(*editor.Chart2D3), map(*editor.Chart2D4) {
        QObject::connect(main.mnuX, &QAction::triggered, &main,
                         guarded(&main, [this] { editor.mnuX_Click(); }));
        QObject::connect(main.mnuY, &QAction::triggered, &main,
                         guarded(&main, [this] { editor.mnuY_Click(); }));
        QObject::connect(&editor, &RowPlotEditor::surveyChanged, &main, [this] { ++changes; });
        main.resize(1024, 768);
        main.show();
        main.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&main));
    }

    void openByX(const Survey& survey) {
        openSurvey(main, survey);
        main.mnuX->trigger();
    }
    void openByY(const Survey& survey) {
        openSurvey(main, survey);
        main.mnuY->trigger();
    }

    void click(const char* button) { clickButton(main, button); }
    void typeRow(const QString& number) {
        editor.Text1->setFocus();
        editor.Text1->selectAll();
        QTest::keyClick(editor.Text1, Qt::Key_Backspace);
        QTest::keyClicks(editor.Text1, number);
    }
    // Selects points of the current row one after another on the profile, then deletes them.
    void deletePoints(const std::vector<qsizetype>& points) {
        for (const qsizetype point : points)
            clickPoint(profile, 1, point);
        click("Command5");
    }

    std::vector<SiteIndex> selected() const {
        const RowSelection& selection = editor.selection();
        return {selection.SelPoints.begin(), selection.SelPoints.begin() + selection.SelCount};
    }

    void expectSteps(bool back, bool forward) {
        EXPECT_EQ(editor.Command1->isEnabled(), back);
        EXPECT_EQ(editor.Command2->isEnabled(), forward);
    }
    void expectRange(const Chart2D& chart, Axis axis, double minimum, double maximum) {
        EXPECT_DOUBLE_EQ(chart.axisRange(axis).minimum, minimum);
        EXPECT_DOUBLE_EQ(chart.axisRange(axis).maximum, maximum);
    }
    // The charts hold exactly this row of the survey as it is now.
    void expectRowShown(int row) {
        const Survey& survey = theSurvey();
        EXPECT_EQ(editor.CurrentRow, row);
        std::vector<Point> em1, em2, plan;
        for (SiteIndex i = 0; i < survey.NumSites; ++i) {
            if (survey.SiteData(kRow, i) != row) continue;
            const double along = survey.SiteData(editor.PlotByX ? kX : kY, i);
            em1.push_back({along, survey.SiteData(kEM1, i)});
            em2.push_back({along, survey.SiteData(kEM2, i)});
            plan.push_back({along, survey.SiteData(editor.PlotByX ? kY : kX, i)});
        }
        EXPECT_TRUE(pointsOf(profile, Chart2D::kData, 1) == em1);
        EXPECT_TRUE(pointsOf(profile, Chart2D::kData, 2) == em2);
        EXPECT_TRUE(pointsOf(map, Chart2D::kData, 1) == plan);
        const QString count = QString::number(em1.size()) + (em1.size() == 1 ? u" point)"_s : u" points)"_s);
        EXPECT_EQ(map.headerText(), u"Sample Row Plot:  Row #%1 ("_s.arg(row) + count);
        EXPECT_TRUE(profile.isVisible());
        EXPECT_TRUE(map.isVisible());
    }
    void expectNothingSelected() {
        EXPECT_EQ(editor.selection().SelCount, 0);
        EXPECT_EQ(profile.pointCount(Chart2D::kHighlight, 1), 0);
        EXPECT_EQ(map.pointCount(Chart2D::kHighlight, 1), 0);
        EXPECT_FALSE(editor.Command5->isEnabled());
    }
    void expectEmptied(int row) {
        EXPECT_EQ(map.headerText(), u"Sample Row Plot:  Row #%1 (0 point)"_s.arg(row));
        EXPECT_EQ(profile.pointCount(Chart2D::kData, 1), 0);
        EXPECT_EQ(map.pointCount(Chart2D::kData, 1), 0);
        EXPECT_TRUE(profile.isVisible());
        EXPECT_TRUE(map.isVisible());
        EXPECT_TRUE(editor.Command6->isEnabled());
        expectNothingSelected();
    }

    frmMain main;
    RowPlotEditor& editor;
    Chart2D& profile;
    Chart2D& map;
    int changes = 0;
    ExpectedBoxes boxes;
};

}  // namespace

TEST_F(RowPlots, AreHiddenUntilTheEditorIsOpened) {
    EXPECT_FALSE(editor.isVisible());
    EXPECT_FALSE(profile.isVisible());
    EXPECT_FALSE(map.isVisible());
    EXPECT_FALSE(editor.EditorStarted);
}

TEST_F(RowPlots, OpenAtRowOneByX) {
    openByX(threeRows());
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
    openByY(threeRows());
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
    openByX(threeRows());
    QTest::qWait(1);
    EXPECT_LE(map.geometry().bottom(), profile.geometry().top());
}

TEST_F(RowPlots, DrawOneSeriesWhereThereIsOneReading) {
    Survey survey = threeRows();
    survey.TwoEMColumns = false;
    openByX(survey);
    EXPECT_EQ(profile.seriesCount(Chart2D::kData), 1);
    expectRange(profile, Axis::Y, 19, 31);
    clickPoint(profile, 1, 2);
    EXPECT_EQ(profile.seriesCount(Chart2D::kHighlight), 1);
    EXPECT_TRUE(pointsOf(profile, Chart2D::kHighlight, 1) == std::vector<Point>({{110, 30}}));
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
    boxes.tell(u"Subscript out of range"_s);
    openByX(survey);
    EXPECT_FALSE(editor.isVisible());
    EXPECT_FALSE(profile.isVisible());
    EXPECT_FALSE(editor.EditorStarted);
}

TEST_F(RowPlots, StepThroughTheRowsAndBack) {
    openByX(threeRows());
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
    openByX(threeRows());
    click("Command2");
    expectRange(profile, Axis::X, -60, 340);
    expectRange(profile, Axis::Y, 32.5, 66.5);
    expectRange(map, Axis::X, -60, 340);
    expectRange(map, Axis::Y, -140, 260);
    EXPECT_EQ(map.headerText(), u"Sample Row Plot:  Row #2 (1 point)"_s);
}

TEST_F(RowPlots, StepByPageKeysFromAnywhereInTheEditor) {
    openByX(threeRows());
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
    openByX(threeRows());
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
    openByX(threeRows());
    typeRow(u"2"_s);
    EXPECT_TRUE(editor.Option2->isChecked());
    QTest::keyClick(editor.Text1, Qt::Key_Return);
    expectRowShown(2);
    expectSteps(true, true);
}

TEST_F(RowPlots, SayWhatIsWrongWithATypedRowNumber) {
    openByX(threeRows());
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

TEST_F(RowPlots, ReadOutTheProfileUnderThePointer) {
    openByX(threeRows());
    pointAt(profile, pixelOf(profile, Chart2D::kData, 1, 2));
    EXPECT_EQ(profile.footerText(), u"UTM X = 110.00, ECa = 30.00"_s);
    pointAt(profile, pixelOf(profile, Chart2D::kData, 1, 2) + QPoint(0, 12));
    EXPECT_EQ(profile.footerText(), u"No Point Selected"_s);
    pointAt(profile, pixelOf(profile, Chart2D::kData, 2, 2));
    EXPECT_EQ(profile.footerText(), u"No Point Selected"_s);
    pointAt(profile, QPoint(2, 2));
    EXPECT_EQ(profile.footerText(), u"No Point Selected"_s);
    main.mnuY->trigger();
    pointAt(profile, pixelOf(profile, Chart2D::kData, 1, 4));
    EXPECT_EQ(profile.footerText(), u"UTM Y = 12.00, ECa = 28.00"_s);
}

TEST_F(RowPlots, ReadOutTheMapUnderThePointer) {
    openByX(threeRows());
    pointAt(map, pixelOf(map, Chart2D::kData, 1, 4));
    EXPECT_EQ(map.footerText(), u"UTM X = 130.00, UTM Y = 12.00"_s);
    pointAt(map, pixelOf(map, Chart2D::kData, 1, 4) + QPoint(9, 0));
    EXPECT_EQ(map.footerText(), u"No Point Selected"_s);
    main.mnuY->trigger();
    pointAt(map, pixelOf(map, Chart2D::kData, 1, 4));
    EXPECT_EQ(map.footerText(), u"UTM Y = 12.00, UTM X = 130.00"_s);
}

TEST_F(RowPlots, SelectPointsOnBothChartsInTheOrderOfPicking) {
    openByX(threeRows());
    EXPECT_TRUE(editor.Command6->isEnabled());
    clickPoint(profile, 1, 4);
    EXPECT_TRUE(editor.Command5->isEnabled());
    EXPECT_FALSE(editor.Command6->isEnabled());
    clickPoint(map, 1, 2);
    EXPECT_EQ(selected(), (std::vector<SiteIndex>{4, 2}));
    EXPECT_TRUE(pointsOf(profile, Chart2D::kHighlight, 1) == std::vector<Point>({{130, 28}, {110, 30}}));
    EXPECT_TRUE(pointsOf(profile, Chart2D::kHighlight, 2) == std::vector<Point>({{130, 55}, {110, 45}}));
    EXPECT_TRUE(pointsOf(map, Chart2D::kHighlight, 1) == std::vector<Point>({{130, 12}, {110, 11}}));
}

TEST_F(RowPlots, LeaveAPointThatIsPickedTwiceUnselected) {
    openByX(threeRows());
    for (const qsizetype point : {4, 2, 5})
        clickPoint(profile, 1, point);
    clickPoint(map, 1, 2);
    EXPECT_EQ(selected(), (std::vector<SiteIndex>{4, 5}));
    EXPECT_TRUE(pointsOf(profile, Chart2D::kHighlight, 1) == std::vector<Point>({{130, 28}, {140, 22}}));
    EXPECT_TRUE(pointsOf(map, Chart2D::kHighlight, 1) == std::vector<Point>({{130, 12}, {140, 10}}));
    EXPECT_TRUE(editor.Command5->isEnabled());
    clickPoint(profile, 1, 5);
    clickPoint(profile, 1, 4);
    expectNothingSelected();
    EXPECT_FALSE(editor.Command6->isEnabled());
}

TEST_F(RowPlots, TakeSitesAtTheSameCoordinateForOne) {
    openByX(madeSurvey({{1, 1, 5, 5, 1}, {2, 1, 6, 6, 1}, {2, 9, 15, 15, 1}, {3, 1, 8, 8, 1}}));
    clickPoint(map, 1, 2);
    clickPoint(map, 1, 3);
    expectNothingSelected();
    clickPoint(map, 1, 3);
    EXPECT_EQ(selected(), std::vector<SiteIndex>{3});
}

TEST_F(RowPlots, SelectNothingBesideThePoints) {
    openByX(threeRows());
    clickAt(profile, pixelOf(profile, Chart2D::kData, 1, 2) + QPoint(0, 5));
    clickPoint(profile, 2, 2);
    clickAt(profile, QPoint(1, 1));
    clickAt(map, QPoint(1, 1));
    expectNothingSelected();
    EXPECT_TRUE(editor.Command6->isEnabled());
}

TEST_F(RowPlots, SelectThreePixelsBesideAPoint) {
    openByX(threeRows());
    clickAt(profile, pixelOf(profile, Chart2D::kData, 1, 2) + QPoint(3, 0));
    EXPECT_EQ(selected(), std::vector<SiteIndex>{2});
}

TEST_F(RowPlots, ForgetTheSelectionWithEveryNewRow) {
    openByX(threeRows());
    clickPoint(profile, 1, 4);
    click("Command2");
    expectNothingSelected();
    EXPECT_TRUE(editor.Command6->isEnabled());
    click("Command1");
    clickPoint(profile, 1, 4);
    main.mnuY->trigger();
    expectNothingSelected();
    EXPECT_TRUE(editor.Command6->isEnabled());
}

TEST_F(RowPlots, KeepTheSelectionWhenANumberIsToBeTypedButNotItsDeletion) {
    openByX(threeRows());
    clickPoint(profile, 1, 4);
    click("Option2");
    EXPECT_FALSE(editor.Command5->isEnabled());
    EXPECT_EQ(editor.selection().SelCount, 1);
    clickPoint(profile, 1, 2);
    EXPECT_TRUE(editor.Command5->isEnabled());
    EXPECT_EQ(editor.selection().SelCount, 2);
}

TEST_F(RowPlots, Refuse102SelectedPoints) {
    openByX(longRow(120));
    for (qsizetype point = 1; point <= 101; ++point)
        clickPoint(profile, 1, point);
    ASSERT_EQ(editor.selection().SelCount, 101);
    const auto before = selected();
    boxes.tell(u"Subscript out of range"_s);
    clickPoint(profile, 1, 110);
    EXPECT_EQ(boxes.pending(), 0);
    EXPECT_EQ(selected(), before);
    EXPECT_EQ(profile.pointCount(Chart2D::kHighlight, 1), 101);
    EXPECT_EQ(map.pointCount(Chart2D::kHighlight, 1), 101);
    Survey expected = longRow(120);
    deleteOneByOne(expected, 1, before);
    click("Command5");
    expectSameSurvey(theSurvey(), expected);
}

TEST_F(RowPlots, DeleteSitesInEveryOrder) {
    for (const std::vector<qsizetype>& order :
         {std::vector<qsizetype>{1, 2, 4}, {4, 2, 1}, {2, 4, 1}, {2, 1, 4}, {4, 1, 2}, {1, 4, 2}}) {
        openByX(threeRows());
        click("Command2");
        click("Command2");
        deletePoints(order);
        Survey expected = threeRows();
        deleteOneByOne(expected, 3, {order.begin(), order.end()});
        expectSameSurvey(theSurvey(), expected);
        EXPECT_EQ(theSurvey().SiteData(kX, 6), 140);
        expectRowShown(3);
        expectNothingSelected();
        expectSteps(true, false);
        EXPECT_TRUE(editor.Command6->isEnabled());
    }
    EXPECT_EQ(changes, 6);
}

TEST_F(RowPlots, DeleteSitesOfRowOneAndOpenAfresh) {
    openByY(threeRows());
    typeRow(u"1"_s);
    QTest::keyClick(editor.Text1, Qt::Key_Return);
    clickPoint(map, 1, 4);
    clickPoint(map, 1, 2);
    click("Command5");
    Survey expected = threeRows();
    deleteOneByOne(expected, 1, {4, 2});
    expectSameSurvey(theSurvey(), expected);
    expectRowShown(1);
    EXPECT_TRUE(editor.PlotByY);
    EXPECT_TRUE(editor.Option1->isChecked());
    EXPECT_FALSE(editor.Command3->isEnabled());
    EXPECT_EQ(editor.Text1->text(), QString());
    expectSteps(false, true);
    expectNothingSelected();
}

TEST_F(RowPlots, ShowAnEmptiedRowInTheMiddleAndStepOnToTheRowThatMovedUp) {
    openByX(threeRows());
    click("Command2");
    Survey expected = threeRows();
    deleteOneByOne(expected, 2, {1});
    deletePoints({1});
    expectSameSurvey(theSurvey(), expected);
    expectEmptied(2);
    EXPECT_EQ(theSurvey().NumRows, 2);
    expectRange(map, Axis::X, -100, 360);
    expectRange(map, Axis::Y, -190, 313);
    expectRange(profile, Axis::X, -100, 360);
    expectSteps(true, false);
    click("Command1");
    expectRowShown(1);
    click("Command2");
    expectRowShown(2);
    EXPECT_EQ(theSurvey().SiteData(kEM1, 5), 12);
}

TEST_F(RowPlots, StepOnFromAnEmptiedFirstRowToTheOneThatMovedUp) {
    openByX(threeRows());
    Survey expected = threeRows();
    deleteOneByOne(expected, 1, {3, 1, 5, 2, 4});
    deletePoints({3, 1, 5, 2, 4});
    expectSameSurvey(theSurvey(), expected);
    expectEmptied(1);
    expectSteps(false, true);
    click("Command2");
    expectRowShown(1);
    expectSteps(false, true);
    click("Command2");
    expectRowShown(2);
    expectSteps(true, false);
}

TEST_F(RowPlots, StepBackFromAnEmptiedLastRow) {
    openByX(threeRows());
    typeRow(u"3"_s);
    QTest::keyClick(editor.Text1, Qt::Key_Return);
    Survey expected = threeRows();
    deleteOneByOne(expected, 3, {4, 3, 2, 1});
    deletePoints({4, 3, 2, 1});
    expectSameSurvey(theSurvey(), expected);
    expectEmptied(3);
    expectSteps(true, false);
    click("Command1");
    expectRowShown(2);
    expectSteps(true, false);
}

TEST_F(RowPlots, LeaveTheEmptyStateAloneUnderThePointer) {
    openByX(threeRows());
    click("Command2");
    deletePoints({1});
    clickAt(profile, profile.rect().center());
    QTest::keyClick(&profile, Qt::Key_Right);
    QTest::keyClick(&profile, Qt::Key_Space);
    expectEmptied(2);
    EXPECT_EQ(profile.footerText(), u"No Point Selected"_s);
}

TEST_F(RowPlots, DisableWhatNeedsTwoRows) {
    openByX(madeSurvey({{1, 1, 5, 5, 1}, {2, 1, 6, 6, 1}, {3, 90, 7, 7, 2}}));
    click("Command2");
    deletePoints({1});
    expectSteps(false, false);
    for (const QString& item : {u"mnuRow"_s, u"mnuDistance"_s, u"mnuGrid"_s, u"mnuData"_s, u"mnuStat"_s})
        EXPECT_FALSE(main.menuItem(item)->isEnabled()) << item.toStdString();
    EXPECT_TRUE(main.menuItem(u"mnuIDEW"_s)->isEnabled());
    click("Command4");
    EXPECT_TRUE(main.menuItem(u"mnuData"_s)->isEnabled());
    EXPECT_FALSE(main.menuItem(u"mnuRow"_s)->isEnabled());
}

TEST_F(RowPlots, EmptyTheOnlyRow) {
    openByX(madeSurvey({{1, 1, 5, 5, 1}, {2, 1, 6, 6, 1}}));
    expectSteps(false, false);
    deletePoints({2, 1});
    EXPECT_EQ(theSurvey().NumSites, 0);
    EXPECT_EQ(theSurvey().NumRows, 0);
    expectEmptied(1);
    expectSteps(false, false);
    boxes.tell(u"Invalid Input: row number out of range"_s);
    typeRow(u"1"_s);
    QTest::keyClick(editor.Text1, Qt::Key_Return);
    EXPECT_EQ(boxes.pending(), 0);
    expectEmptied(1);
}

TEST_F(RowPlots, AreEditedByKeyboardAlone) {
    openByX(threeRows());
    EXPECT_TRUE(profile.hasFocus());
    QTest::keyClick(&profile, Qt::Key_Right);
    EXPECT_EQ(profile.footerText(), u"UTM X = 100.00, ECa = 20.00"_s);
    EXPECT_EQ(map.footerText(), u"UTM X = 100.00, UTM Y = 10.00"_s);
    QTest::keyClick(&profile, Qt::Key_Right);
    QTest::keyClick(&profile, Qt::Key_Up);
    QTest::keyClick(&profile, Qt::Key_Left);
    EXPECT_EQ(profile.footerText(), u"UTM X = 110.00, ECa = 30.00"_s);
    QTest::keyClick(&profile, Qt::Key_Space);
    EXPECT_EQ(selected(), std::vector<SiteIndex>{2});
    QTest::keyClick(&profile, Qt::Key_Space);
    expectNothingSelected();
    QTest::keyClick(&profile, Qt::Key_Delete);
    EXPECT_EQ(theSurvey().NumSites, 10);
    QTest::keyClick(&map, Qt::Key_Space);
    QTest::keyClick(&map, Qt::Key_Delete);
    Survey expected = threeRows();
    deleteOneByOne(expected, 1, {2});
    expectSameSurvey(theSurvey(), expected);
    QTest::keyClick(&profile, Qt::Key_Left);
    EXPECT_EQ(profile.footerText(), u"UTM X = 140.00, ECa = 22.00"_s);
}

TEST_F(RowPlots, DeleteTextAndNotSitesWhileANumberIsTyped) {
    openByX(threeRows());
    clickPoint(profile, 1, 2);
    editor.Text1->setFocus();
    QTest::keyClick(editor.Text1, Qt::Key_Delete);
    EXPECT_EQ(theSurvey().NumSites, 10);
}

TEST_F(RowPlots, CloseWithFinishedAndOpenAgainAtRowOne) {
    openByX(threeRows());
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
    openByX(threeRows());
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
    openByX(threeRows());
    const QSignalSpy asked(editor.cmdHelp, &QPushButton::clicked);
    click("cmdHelp");
    QTest::keyClick(&map, Qt::Key_F1);
    QTest::keyClick(editor.Text1, Qt::Key_F1);
    EXPECT_EQ(asked.count(), 3);
}

namespace {

// A sheet of A4 with so many dots an inch, drawn as on paper.
QImage printedPage(const RowPlotEditor& editor, int dotsPerInch) {
    QImage page(dotsPerInch * 827 / 100, dotsPerInch * 1169 / 100, QImage::Format_RGB32);
    page.fill(Qt::white);
    page.setDotsPerMeterX(qRound(dotsPerInch / 0.0254));
    page.setDotsPerMeterY(qRound(dotsPerInch / 0.0254));
    QPainter painter(&page);
    editor.drawPage(painter, page.size(), dotsPerInch / 300.0);
    return page;
}

// The part of the page that is not white, in inches.
QRectF inked(const QImage& page, const QRectF& inches, int dotsPerInch) {
    const QRect part = QRectF(inches.topLeft() * dotsPerInch, inches.size() * dotsPerInch).toRect();
    QRect ink;
    for (int y = part.top(); y <= std::min(part.bottom(), page.height() - 1); ++y)
        for (int x = part.left(); x <= std::min(part.right(), page.width() - 1); ++x)
            if (qGray(page.pixel(x, y)) < 128) ink |= QRect(x, y, 1, 1);
    return QRectF(QPointF(ink.topLeft()) / dotsPerInch, QSizeF(ink.size()) / dotsPerInch);
}

}  // namespace

TEST_F(RowPlots, PrintTheMapAboveTheProfileOnOnePage) {
    theSession().InputFileName = "/surveys/north field.dat";
    openByX(threeRows());
    const QImage page = printedPage(editor, 100);
    const QRectF title = inked(page, {0, 0, 8.27, 0.2}, 100);
    EXPECT_GT(title.width(), 7);
    const QRectF mapInk = inked(page, {0, 0.37, 8.27, 4.5}, 100);
    const QRectF profileInk = inked(page, {0, 5.07, 8.27, 4.5}, 100);
    for (const QRectF& ink : {mapInk, profileInk}) {
        EXPECT_GT(ink.width(), 6);
        EXPECT_GT(ink.height(), 3.5);
    }
    EXPECT_TRUE(inked(page, {0, 9.7, 8.27, 1.9}, 100).size().isEmpty() ||
                inked(page, {0, 9.7, 8.27, 1.9}, 100).height() <= 0.01);
}

TEST_F(RowPlots, PrintAtTheSameSizeAtEveryResolution) {
    openByX(threeRows());
    const QRectF whole(0, 0, 8.27, 11.69);
    const QRectF coarse = inked(printedPage(editor, 150), whole, 150);
    const QRectF fine = inked(printedPage(editor, 300), whole, 300);
    EXPECT_NEAR(coarse.left(), fine.left(), 0.03);
    EXPECT_NEAR(coarse.top(), fine.top(), 0.03);
    EXPECT_NEAR(coarse.right(), fine.right(), 0.03);
    EXPECT_NEAR(coarse.bottom(), fine.bottom(), 0.03);
}

TEST_F(RowPlots, PrintOnSmallerPaperWithoutCuttingAnything) {
    openByX(threeRows());
    QImage page(400, 300, QImage::Format_RGB32);
    page.fill(Qt::white);
    page.setDotsPerMeterX(3937);
    page.setDotsPerMeterY(3937);
    QPainter painter(&page);
    editor.drawPage(painter, page.size(), 100 / 300.0);
    painter.end();
    const QRectF ink = inked(page, {0, 0, 4, 3}, 100);
    EXPECT_LT(ink.bottom(), 2.99);
    EXPECT_GT(ink.bottom(), 2.5);
}

TEST_F(RowPlots, PrintWithoutTheReadoutOfThePointer) {
    openByX(threeRows());
    const QImage before = printedPage(editor, 100);
    pointAt(map, pixelOf(map, Chart2D::kData, 1, 4));
    EXPECT_TRUE(printedPage(editor, 100) == before);
    EXPECT_EQ(map.footerText(), u"UTM X = 130.00, UTM Y = 12.00"_s);
}

TEST_F(RowPlots, PrintIntoAPdfFileWhereNoPrinterIsInstalled) {
    const TemporaryFolder folder;
    setDefaultPrinterName([] { return QString(); });
    QString path;
    setFileResponder([&](const FileQuestion& question) {
        EXPECT_TRUE(question.toSave);
        return path;
    });
    openByX(threeRows());
    for (const double scale : {1.0, 2.0, 4.0}) {
        theSession().PrintScale = scale;
        path = fromPath(folder / "row.pdf");
        QTest::keyClick(&profile, Qt::Key_P, Qt::ControlModifier);
        QFile pdf(path);
        ASSERT_TRUE(pdf.open(QFile::ReadOnly));
        const QByteArray content = pdf.readAll();
        EXPECT_TRUE(content.startsWith("%PDF"));
        EXPECT_GT(content.size(), 5000);
        EXPECT_LT(content.size(), 200000);
        EXPECT_EQ(content.count("/Type /Page\n"), 1);
        QFile::remove(path);
    }
    theSession().PrintScale = 1;
    path.clear();
    click("Command6");
    setFileResponder({});
    setDefaultPrinterName({});
}
