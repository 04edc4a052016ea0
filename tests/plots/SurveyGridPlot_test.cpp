// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/SurveyGridPlot.h"

#include "app/frmMain.h"
#include "desktop/Guarded.h"
#include "drawing/Pixels.h"
#include "journal/journal.h"
#include "plots/plot_limits.h"
#include "plots/reading_colours.h"
#include "support/ExpectedBoxes.h"
#include "support/Pixels.h"
#include "support/PlotWindow.h"
#include "support/PointerAtShow.h"
#include "support/made_survey.h"
#include "support/survey_under_test.h"

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
        QObject::connect(main.mnuGridEM1, &QAction::triggered, &main,
                         guarded(&main, [this] { grid.mnuGridEM1_Click(); }));
        QObject::connect(main.mnuGridEM2, &QAction::triggered, &main,
                         guarded(&main, [this] { grid.mnuGridEM2_Click(); }));
        main.resize(1024, 768);
        main.show();
    }
    void plot(const Survey& survey) {
        openSurvey(main, survey);
        main.mnuGrid->trigger();
    }
    void plotReadings(const Survey& survey) {
        openSurvey(main, survey);
        main.mnuGridEM1->trigger();
    }
    // Every site has the colour of its reading on the scale.
    void expectColours(SiteColumn column) {
        const QImage picture = chart.grab().toImage();
        const std::vector<Shade> shades = readingShades(theSurvey(), column, grid.scale->range());
        for (SiteIndex i = 0; i < theSurvey().NumSites; ++i) {
            const QPointF at = chart.dataToPixel(theSurvey().SiteData(kX, i), theSurvey().SiteData(kY, i));
            EXPECT_EQ(picture.pixel(pixelAt(at)) & 0xFFFFFFU,
                      colourMap()[shades[static_cast<std::size_t>(i)]])
                << i;
        }
    }

    frmMain main;
    SurveyGridPlot grid{main};
    Chart2D& chart = *grid.Chart2D2;
    ExpectedBoxes boxes;
};

}  // namespace

TEST_F(SurveyGrid, ShowsEverySiteInTheSeriesOfItsRowAndTheHourglassUntilItIsDrawn) {
    EXPECT_FALSE(chart.isVisible());
    const PointerAtShow pointer(main, chart);
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
    EXPECT_EQ(pointer.shape(), Qt::WaitCursor);
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

TEST_F(SurveyGrid, ColoursRowsInTurnsOfFifteen) {
    plot(surveyOfRows(31));
    const auto colour = [this](int row) { return chart.seriesStyle(Chart2D::kData, row).colour; };
    for (const auto& [row, number] : {std::pair(1, 1), {14, 14}, {15, 0}, {16, 1}, {30, 0}, {31, 1}})
        EXPECT_EQ(colour(row), number) << row;
}

TEST_F(SurveyGrid, SharesItsLimits) {
    plot(surveyOfRows(3));
    expectRange(chart, Axis::kX, -10, 210);
    expectRange(chart, Axis::kY, 9, 31);
    expectRange(chart, Axis::kY2, 9, 31);
    EXPECT_EQ(thePlotLimits(), (PlotLimits{-10, 210, 9, 31}));
}

TEST_F(SurveyGrid, HasRowsWithoutSitesAsTheMapLeavesThem) {
    Survey survey = surveyOfRows(2);
    survey.NumRows = 3;
    plot(survey);
    EXPECT_TRUE(chart.isVisible());
    ASSERT_EQ(chart.seriesCount(Chart2D::kData), 3);
    EXPECT_EQ(chart.pointCount(Chart2D::kData, 3), 0);
    EXPECT_EQ(thePlotLimits(), (PlotLimits{-10, 210, 9.5, 20.5}));
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
        EXPECT_EQ(chart.footerText(),
                  u"Row #2, UTM X = 100.00, UTM Y = 20.00, Site # 1005, EM1 = 1.00, EM2 = 2.00"_s);
        pointAt(chart, site + 4 * side);
        EXPECT_EQ(chart.footerText(), QString());
    }
}

namespace {

Survey threeReadings() {
    return madeSurvey({{0, 0, 10, 70, 1}, {50, 20, 30, 80, 1}, {100, 40, 50, 90, 2}});
}

}  // namespace

TEST_F(SurveyGrid, ByReadingColoursEverySiteBesideAScale) {
    plotReadings(threeReadings());
    EXPECT_TRUE(grid.scale->isVisible());
    EXPECT_EQ(grid.scale->range(), (Interval{10, 50}));
    EXPECT_EQ(grid.scale->title(), u"1st EM reading (mS/m)"_s);
    ASSERT_EQ(chart.seriesCount(Chart2D::kData), 2);
    expectColours(kEM1);
    main.mnuGridEM2->trigger();
    EXPECT_EQ(grid.scale->range(), (Interval{70, 90}));
    EXPECT_EQ(grid.scale->title(), u"2nd EM reading (mS/m)"_s);
    expectColours(kEM2);
}

TEST_F(SurveyGrid, HasTheColoursOfRowsAgainAfterThoseOfReadings) {
    plot(threeReadings());
    QCoreApplication::processEvents();
    const QImage rows = chart.grab().toImage();
    main.mnuGridEM1->trigger();
    EXPECT_NE(chart.grab().toImage(), rows);
    main.mnuGrid->trigger();
    EXPECT_FALSE(grid.scale->isVisible());
    QCoreApplication::processEvents();
    EXPECT_EQ(chart.grab().toImage(), rows);
}

TEST_F(SurveyGrid, ByReadingHasItsScaleAtTheHeightOfThePlot) {
    plotReadings(threeReadings());
    chart.grab();
    const QImage strip = grid.scale->grab().toImage();
    EXPECT_EQ(strip.pixel(15, qRound(chart.plotArea().top()) - 2) & 0xFFFFFFU, 0xFFFFFFU);
    EXPECT_EQ(strip.pixel(15, qRound(chart.plotArea().top()) + 2) & 0xFFFFFFU, colourMap()[kShades - 2]);
    EXPECT_EQ(strip.pixel(15, qRound(chart.plotArea().bottom()) - 2) & 0xFFFFFFU, colourMap()[0]);
}

TEST_F(SurveyGrid, ByReadingIsColouredAnewWhenItsScaleIsNarrowed) {
    plotReadings(threeReadings());
    const int height = grid.scale->height();
    drag(*grid.scale, Qt::LeftButton, {15, height / 3}, {15, height * 2 / 3});
    EXPECT_LT(grid.scale->range().length(), 30);
    expectColours(kEM1);
    const Interval chosen = grid.scale->range();
    surveyUnderTest().SiteData(kEM1, 1) = 33;
    EXPECT_TRUE(grid.redraw());
    EXPECT_EQ(grid.scale->range(), chosen);
    expectColours(kEM1);
}

TEST_F(SurveyGrid, ByReadingFollowsTheSurvey) {
    plotReadings(threeReadings());
    surveyUnderTest().SiteData(kEM1, 2) = 90;
    EXPECT_TRUE(grid.redraw());
    EXPECT_EQ(grid.scale->range(), (Interval{10, 90}));
    expectColours(kEM1);
    main.mnuGridEM2->trigger();
    surveyUnderTest().TwoEMColumns = false;
    EXPECT_FALSE(grid.redraw()) << "the reading has gone";
}

TEST_F(SurveyGrid, ByReadingIsPrintedInItsColours) {
    plotReadings(threeReadings());
    const QImage paper = printed(chart, {1200, 900}, 100);
    for (const Shade shade : {Shade{0}, Shade{128}, Shade{255}})
        EXPECT_GT(countColour(paper, QColor::fromRgb(colourMap()[shade])), 0) << int{shade};
}

}  // namespace tessel
