// SPDX-License-Identifier: GPL-3.0-or-later
// A distance between rows that is chosen by eye: on a lag distance plot, with the survey grid to look at.
#include "journal/journal.h"
#include "plots/Chart2D.h"
#include "rows/frmDataEdit.h"
#include "support/PlotWindow.h"
#include "support/RunningProgram.h"
#include "support/survey_bits.h"

namespace tessel {

namespace {

// Three rows at a minimum distance of 7: the steps are 5 and 4 m, and 10 m from row to row.
class ChosenDistance : public testing::Test, protected RunningProgram {
  protected:
    ChosenDistance() : RunningProgram(rowsAlongY(3)) {
        main->resize(1000, 700);
        main->activateWindow();
    }

    void openPlot(const QString& item = u"mnuTrue_Dis"_s) {
        chooseItem(*main, item);
        QCoreApplication::processEvents();
        without = lag().grab().toImage();
    }
    void openDialog() {
        survey = theSurvey();
        chooseItem(*main, u"mnuData"_s);
        shownWindow(u"frmDataEdit"_s);
    }
    void openPlotAndDialog() {
        openPlot();
        openDialog();
    }
    Chart2D& lag() { return controlAs<Chart2D>(*main, u"Chart2D1"_s); }
    Chart2D& grid() { return controlAs<Chart2D>(*main, u"Chart2D2"_s); }
    frmDataEdit& dialog() { return static_cast<frmDataEdit&>(shownWindow(u"frmDataEdit"_s)); }
    QPoint atHeight(double distance) {
        const QRectF area = lag().plotArea();
        return QPointF(area.left() + area.width() / 3, lag().dataToPixel(1, distance).y()).toPoint();
    }
    void drag(double from, double to) {
        QTest::mousePress(&lag(), Qt::LeftButton, {}, atHeight(from));
        QTest::mouseMove(&lag(), atHeight((from + to) / 2));
        QTest::mouseMove(&lag(), atHeight(to));
        QTest::mouseRelease(&lag(), Qt::LeftButton, {}, atHeight(to));
    }
    void clickWithCtrl(double distance) {
        QTest::mouseClick(&lag(), Qt::LeftButton, Qt::ControlModifier, atHeight(distance));
    }
    void typeDistance(const QString& distance) {
        clickOn(dialog(), u"Option3"_s);
        typeInto(dialog(), u"Text1"_s, distance);
    }
    // Within the pixels that a hand can aim at.
    void expectChosen(const QLineEdit& box, double distance) {
        const double pixel = 10 / lag().plotArea().height();
        EXPECT_NEAR(box.text().toDouble(), distance, 1.5 * pixel);
        EXPECT_LE(box.text().size(), 5) << "no finer than a pixel";
    }
    void expectSurveyUntouched() const { EXPECT_EQ(differences(theSurvey(), survey), ""); }
    std::vector<int> coloursOfGrid() {
        std::vector<int> colours;
        for (int series = 1; series <= grid().seriesCount(Chart2D::kData); ++series)
            colours.insert(colours.end(), static_cast<std::size_t>(grid().pointCount(Chart2D::kData, series)),
                           grid().seriesStyle(Chart2D::kData, series).colour);
        return colours;
    }

    QImage without;  ///< the plot before the dialog is open
    Survey survey;   ///< when it was opened
};

}  // namespace

TEST_F(ChosenDistance, IsDraggedWithTheRedLineIntoTheDialog) {
    openPlotAndDialog();
    EXPECT_NE(lag().grab().toImage(), without) << "the line tells its value";
    QSignalSpy redrawn(&lag(), &Chart2D::redrawn);
    drag(7, 4.5);
    EXPECT_TRUE(dialog().Option3->isChecked());
    expectChosen(*dialog().Text1, 4.5);
    EXPECT_EQ(dialog().lblRows->text(), u"5 rows"_s);
    drag(4.5, 6);
    expectChosen(*dialog().Text1, 6);
    EXPECT_EQ(dialog().lblRows->text(), u"3 rows"_s);
    EXPECT_EQ(redrawn.count(), 0) << "a drag draws no plot";
    expectSurveyUntouched();
}

TEST_F(ChosenDistance, IsSetByAClickWithCtrl) {
    openPlotAndDialog();
    clickWithCtrl(9);
    expectChosen(*dialog().Text1, 9);
    clickWithCtrl(4.5);
    expectChosen(*dialog().Text1, 4.5);
    EXPECT_EQ(dialog().lblRows->text(), u"5 rows"_s);
    QTest::mouseClick(&lag(), Qt::LeftButton, {}, atHeight(2));
    expectChosen(*dialog().Text1, 4.5);
    expectSurveyUntouched();
}

TEST_F(ChosenDistance, BelongsToTheMeasureOfThePlot) {
    openPlot(u"mnuX_Dis"_s);
    openDialog();
    clickOn(dialog(), u"Option2"_s);
    typeInto(dialog(), u"Text4"_s, u"3"_s);
    clickWithCtrl(5);
    EXPECT_TRUE(dialog().Option4->isChecked());
    expectChosen(*dialog().Text5, 5);
    EXPECT_EQ(dialog().lblRows->text(), u"3 rows"_s);
    // Shown in no plot of another measure, which has the line in force to begin with.
    chooseItem(*main, u"mnuTrue_Dis"_s);
    QCoreApplication::processEvents();
    drag(7, 4.5);
    EXPECT_TRUE(dialog().Option3->isChecked());
    expectChosen(*dialog().Text1, 4.5);
}

TEST_F(ChosenDistance, IsNeverBelowZeroNorBeyondThePlot) {
    openPlotAndDialog();
    drag(7, -3);
    EXPECT_EQ(dialog().Text1->text().toDouble(), 0);
    drag(0, 30);
    expectChosen(*dialog().Text1, 10);
}

TEST_F(ChosenDistance, IsToldAtItsLine) {
    openPlotAndDialog();
    clickWithCtrl(4.5);
    const QImage chosen = lag().grab().toImage();
    const QRectF area = lag().plotArea();
    const QRect text(QPoint(int(area.right()) - 40, atHeight(4.5).y() - 14), QSize(38, 10));
    int red = 0;
    for (int x = text.left(); x <= text.right(); ++x)
        for (int y = text.top(); y <= text.bottom(); ++y) {
            const QColor ink = chosen.pixelColor(x, y);
            red += ink.red() > ink.blue() + 80;
        }
    EXPECT_GT(red, 10);
}

TEST_F(ChosenDistance, ShowsThePointerWhatCanBeDragged) {
    openPlotAndDialog();
    pointAt(lag(), atHeight(7));
    EXPECT_EQ(lag().cursor().shape(), Qt::SizeVerCursor);
    pointAt(lag(), atHeight(8));
    EXPECT_EQ(lag().cursor().shape(), Qt::ArrowCursor);
    pointAt(lag(), atHeight(7));
    dialog().close();
    EXPECT_EQ(lag().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(ChosenDistance, IsNoneWithoutTheDialog) {
    openPlot();
    survey = theSurvey();
    drag(7, 4);
    clickWithCtrl(4);
    EXPECT_FALSE(isShown(u"frmDataEdit"_s));
    EXPECT_EQ(lag().grab().toImage(), without);
    for (const int key : {Qt::Key_Return, Qt::Key_Escape})
        QTest::keyClick(&lag(), static_cast<Qt::Key>(key));
    expectSurveyUntouched();
}

TEST_F(ChosenDistance, IsAcceptedByEnterOnThePlot) {
    openPlotAndDialog();
    clickWithCtrl(4.5);
    const double chosen = dialog().Text1->text().toDouble();
    QTest::keyClick(&lag(), Qt::Key_Return);
    EXPECT_FALSE(isShown(u"frmDataEdit"_s));
    EXPECT_EQ(theSurvey().MinDistance, chosen);
    EXPECT_EQ(theSurvey().NumRows, 5);
    EXPECT_EQ(lag().point(Chart2D::kData, 2, 1).y, chosen) << "the red line follows";
}

TEST_F(ChosenDistance, IsGivenUpByEscapeOnThePlot) {
    openPlotAndDialog();
    clickWithCtrl(4.5);
    QTest::keyClick(&lag(), Qt::Key_Escape);
    EXPECT_FALSE(isShown(u"frmDataEdit"_s));
    EXPECT_EQ(lag().grab().toImage(), without);
    expectSurveyUntouched();
}

TEST_F(ChosenDistance, IsNotWhatEnterAcceptsBeforeItIsChosen) {
    openPlotAndDialog();
    clickOn(dialog(), u"Option2"_s);
    typeInto(dialog(), u"Text4"_s, u"3"_s);
    QTest::keyClick(&lag(), Qt::Key_Return);
    QTest::keyClick(&lag(), Qt::Key_Escape);
    EXPECT_TRUE(isShown(u"frmDataEdit"_s));
    EXPECT_EQ(dialog().Text4->text(), u"3"_s);
    expectSurveyUntouched();
}

TEST_F(ChosenDistance, ColoursTheRowsOfTheSurveyGridThatWouldComeOut) {
    chooseItem(*main, u"mnuGrid"_s);
    const std::vector<int> inForce = coloursOfGrid();
    EXPECT_EQ(inForce, (std::vector<int>{1, 1, 1, 2, 2, 2, 3, 3, 3}));
    openDialog();
    typeDistance(u"4.5"_s);
    EXPECT_EQ(coloursOfGrid(), (std::vector<int>{1, 1, 1, 2, 2, 3, 4, 5, 5}));
    EXPECT_EQ(grid().footerText(), u"Not in force yet: 5 rows"_s);
    pointAt(grid(), pixelOf(grid(), Chart2D::kData, 4, 1));
    EXPECT_TRUE(grid().footerText().startsWith(u"Row #4 (not in force yet), UTM X = 20.00, UTM Y = 0.00"_s))
        << grid().footerText().toStdString();
    expectSurveyUntouched();
    typeDistance(u"10"_s);
    EXPECT_EQ(grid().footerText(), u"Not in force yet: 1 row"_s);
    typeDistance(u"x"_s);
    EXPECT_EQ(coloursOfGrid(), inForce);
    EXPECT_EQ(grid().footerText(), QString());
    typeDistance(u"4.5"_s);
    clickOn(dialog(), u"Command2"_s);
    EXPECT_EQ(coloursOfGrid(), inForce);
    expectSurveyUntouched();
}

TEST_F(ChosenDistance, IsSeenInASurveyGridThatIsOpenedLaterInTheSameView) {
    openPlotAndDialog();
    clickWithCtrl(4.5);
    chooseItem(*main, u"mnuGrid"_s);
    EXPECT_EQ(grid().seriesCount(Chart2D::kData), 5);
    QTest::keyClick(&grid(), Qt::Key_Plus);
    typeDistance(u"7"_s);
    EXPECT_EQ(grid().seriesCount(Chart2D::kData), 3);
    EXPECT_TRUE(grid().isZoomed());
}

TEST_F(ChosenDistance, LeavesAGridInTheColoursOfAReadingAlone) {
    chooseItem(*main, u"mnuGridEM1"_s);
    openDialog();
    typeDistance(u"4.5"_s);
    EXPECT_EQ(grid().seriesCount(Chart2D::kData), 3);
    EXPECT_EQ(grid().footerText(), QString());
}

TEST_F(ChosenDistance, IsForeseenAnewWhenSitesHaveGone) {
    chooseItem(*main, u"mnuGrid"_s);
    openDialog();
    typeDistance(u"4.5"_s);
    clickOn(dialog(), u"Option2"_s);
    typeInto(dialog(), u"Text4"_s, u"3"_s);
    clickOn(dialog(), u"Command1"_s);
    EXPECT_EQ(coloursOfGrid(), (std::vector<int>{1, 1, 1, 2, 2, 2}));
    openDialog();
    typeDistance(u"4.5"_s);
    EXPECT_EQ(coloursOfGrid(), (std::vector<int>{1, 1, 1, 2, 2, 3}));
    main->mnuUndo->trigger();
    EXPECT_EQ(coloursOfGrid(), (std::vector<int>{1, 1, 1, 2, 2, 3, 4, 5, 5}));
}

}  // namespace tessel
