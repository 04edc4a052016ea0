// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/SurveyGridPlot.h"

#include "app/frmMain.h"
#include "desktop/Guarded.h"
#include "plots/plot_limits.h"
#include "support/ExpectedBoxes.h"
#include "support/PlotWindow.h"
#include "support/PointerAtShow.h"
#include "support/made_survey.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

using Point = Chart2D::Point;
using Axis = Chart2D::Axis;

Survey surveyOfRows(int rows) {
    std::vector<MadeSite> sites;
    for (int row = 1; row <= rows; ++row)
        for (int i = 0; i < 3; ++i)
            sites.push_back({100.0 * i, 10.0 * row, 1, 2, double(row)});
    return madeSurvey(sites);
}

class SurveyGrid : public testing::Test {
  protected:
    SurveyGrid() {
        QObject::connect(main.mnuGrid, &QAction::triggered, &main,
                         guarded(&main, [this] { grid.mnuGrid_Click(); }));
        main.resize(1024, 768);
        main.show();
    }
    void plot(const Survey& survey) {
        openSurvey(main, survey);
        main.mnuGrid->trigger();
    }
    void expectRange(Axis axis, double minimum, double maximum) {
        EXPECT_DOUBLE_EQ(chart.axisRange(axis).from, minimum);
        EXPECT_DOUBLE_EQ(chart.axisRange(axis).to, maximum);
    }

    frmMain main;
    SurveyGridPlot grid{main};
    Chart2D& chart = *grid.Chart2D2;
    ExpectedBoxes boxes;
};

}  // namespace

TEST_F(SurveyGrid, ShowsEverySiteInTheSeriesOfItsRow) {
    EXPECT_FALSE(chart.isVisible());
    plot(madeSurvey(
        {{5, 50, 1, 1, 1}, {7, 51, 1, 1, 1}, {9, 90, 1, 1, 2}, {1, 80, 1, 1, 3}, {3, 81, 1, 1, 3}}));
    EXPECT_TRUE(chart.isVisible());
    ASSERT_EQ(chart.seriesCount(Chart2D::kData), 3);
    EXPECT_TRUE(pointsOf(chart, Chart2D::kData, 1) == std::vector<Point>({{5, 50}, {7, 51}}));
    EXPECT_TRUE(pointsOf(chart, Chart2D::kData, 2) == std::vector<Point>({{9, 90}}));
    EXPECT_TRUE(pointsOf(chart, Chart2D::kData, 3) == std::vector<Point>({{1, 80}, {3, 81}}));
    EXPECT_EQ(chart.headerText(), u"Sample Grid Plot"_s);
    EXPECT_EQ(chart.axisTitle(Axis::kX), u"X (meters)"_s);
    EXPECT_EQ(chart.axisTitle(Axis::kY), u"Y (meters)"_s);
    EXPECT_EQ(main.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(SurveyGrid, HasABoldHeaderOf12Points) {
    plot(surveyOfRows(3));
    const auto pictureWithHeaderOf = [this](double size, bool bold) {
        chart.setHeaderFont(size, bold);
        return chart.grab().toImage();
    };
    const QImage plotted = chart.grab().toImage();
    EXPECT_NE(plotted, pictureWithHeaderOf(11, true));
    EXPECT_NE(plotted, pictureWithHeaderOf(12, false));
    EXPECT_EQ(plotted, pictureWithHeaderOf(12, true));
}

TEST_F(SurveyGrid, ShowsTheHourglassUntilItIsDrawn) {
    const PointerAtShow pointer(main, chart);
    plot(surveyOfRows(3));
    EXPECT_EQ(pointer.shape(), Qt::WaitCursor);
    EXPECT_EQ(main.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(SurveyGrid, ColoursRowsInTurnsOfFifteen) {
    plot(surveyOfRows(31));
    const auto colour = [this](int row) { return chart.seriesStyle(Chart2D::kData, row).colour; };
    EXPECT_EQ(colour(1), 1);
    EXPECT_EQ(colour(14), 14);
    EXPECT_EQ(colour(15), 0);
    EXPECT_EQ(colour(16), 1);
    EXPECT_EQ(colour(30), 0);
    EXPECT_EQ(colour(31), 1);
}

TEST_F(SurveyGrid, SharesItsLimits) {
    plot(surveyOfRows(3));
    expectRange(Axis::kX, -10, 210);
    expectRange(Axis::kY, 9, 31);
    expectRange(Axis::kY2, 9, 31);
    EXPECT_EQ(thePlotLimits(), (PlotLimits{-10, 210, 9, 31}));
}

TEST_F(SurveyGrid, CountsTheRowsAnew) {
    plot(surveyOfRows(3));
    Survey survey = surveyOfRows(2);
    survey.NumPoints = {};
    plot(survey);
    ASSERT_EQ(chart.seriesCount(Chart2D::kData), 2);
    EXPECT_EQ(chart.pointCount(Chart2D::kData, 2), 3);
    EXPECT_EQ(theSurvey().NumPoints[2], 3);
}

TEST_F(SurveyGrid, OfMoreRowsThanCanBeCountedIsRefused) {
    Survey survey = surveyOfRows(250);
    survey.SiteData(kRow, 749) = 251;
    survey.NumRows = 251;
    boxes.tell(
        u"Subscript out of range\nNo more than 250 rows can be shown or edited. Choose Delete / Join / "
        u"Re-calculate Rows in the Edit menu and recalculate the row numbering with a larger distance."_s);
    plot(survey);
    EXPECT_FALSE(chart.isVisible());
}

TEST_F(SurveyGrid, ReadsOutASiteTwoPixelsAwayAndNoneFourPixelsAway) {
    plot(surveyOfRows(3));
    const QPoint site = pixelOf(chart, Chart2D::kData, 2, 2);
    for (const QPoint side : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
        pointAt(chart, site + 2 * side);
        EXPECT_EQ(chart.footerText(), u"Row #2, UTM X = 100.00, UTM Y = 20.00"_s);
        pointAt(chart, site + 4 * side);
        EXPECT_EQ(chart.footerText(), QString());
    }
}

}  // namespace tessel
