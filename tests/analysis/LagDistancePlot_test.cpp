// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/LagDistancePlot.h"

#include "app/frmMain.h"
#include "desktop/Guarded.h"
#include "journal/journal.h"
#include "support/ExpectedBoxes.h"
#include "support/PlotWindow.h"
#include "support/PointerAtShow.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

using Point = Chart2D::Point;
using Axis = Chart2D::Axis;

class LagPlots : public testing::Test {
  protected:
    LagPlots() {
        join(main.mnuTrue_Dis, &LagDistancePlot::mnuTrue_Dis_Click);
        join(main.mnuX_Dis, &LagDistancePlot::mnuX_Dis_Click);
        join(main.mnuY_Dis, &LagDistancePlot::mnuY_Dis_Click);
        main.resize(1024, 768);
        main.show();
    }
    void join(QAction* item, void (LagDistancePlot::*click)()) {
        LagDistancePlot* const plot = &lag;
        QObject::connect(item, &QAction::triggered, plot,
                         guarded(&main, [plot, click] { (plot->*click)(); }));
    }
    // By true distances.
    void plot(const Survey& survey) {
        openSurvey(main, survey);
        main.mnuTrue_Dis->trigger();
    }
    void expectDistances(const std::vector<double>& distances) {
        const auto sites = static_cast<qsizetype>(distances.size()) + 1;
        for (const int series : {1, 2}) {
            ASSERT_EQ(chart.pointCount(Chart2D::kData, series), sites);
            EXPECT_TRUE(chart.point(Chart2D::kData, series, 0) == Point());
            EXPECT_TRUE(chart.point(Chart2D::kData, series, sites) == Point());
        }
        for (qsizetype i = 1; i < sites; ++i) {
            EXPECT_TRUE(chart.point(Chart2D::kData, 1, i) ==
                        (Point{double(i), distances[static_cast<std::size_t>(i) - 1]}));
            EXPECT_TRUE(chart.point(Chart2D::kData, 2, i) == (Point{double(i), theSurvey().MinDistance}));
        }
    }

    frmMain main;
    LagDistancePlot lag{main};
    Chart2D& chart = *lag.Chart2D1;
    ExpectedBoxes boxes;
};

}  // namespace

TEST_F(LagPlots, ShowTrueDistancesAndTheMinimumDistanceAndTheHourglassUntilTheyAreDrawn) {
    EXPECT_FALSE(chart.isVisible());
    const PointerAtShow pointer(main, chart);
    plot(surveyOfTwoRows());
    EXPECT_TRUE(chart.isVisible());
    expectDistances({10, 10, 40, 10, 10});
    expectRange(chart, Axis::kX, 0, 6);
    expectRange(chart, Axis::kY, 0, 40);
    EXPECT_EQ(chart.headerText(), u"Sample Distance Plot (True Distance)"_s);
    EXPECT_EQ(chart.axisTitle(Axis::kX), u"Site sequence number"_s);
    EXPECT_EQ(chart.axisTitle(Axis::kY), u"Distance (meters)"_s);
    EXPECT_EQ(pointer.shape(), Qt::WaitCursor);
    EXPECT_EQ(main.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(LagPlots, DrawALightBlueAndALightRedLineWithSymbolsWhereThereAreFewerThanThreeSites) {
    for (const std::size_t sites : {2U, 3U}) {
        const std::vector<MadeSite> row = {{0, 0, 1, 1, 1}, {10, 0, 1, 1, 1}, {20, 0, 1, 1, 1}};
        plot(madeSurvey({row.begin(), row.begin() + std::ptrdiff_t(sites)}));
        expectDistances(std::vector<double>(sites - 1, 10));
        for (const int series : {1, 2}) {
            const SeriesStyle style = chart.seriesStyle(Chart2D::kData, series);
            EXPECT_EQ(style.line, ChartLine::kThin);
            EXPECT_EQ(style.symbol, sites == 2 ? ChartSymbol::kDisc : ChartSymbol::kNone);
            EXPECT_EQ(style.colour, series == 1 ? 9 : 12);
        }
    }
}

TEST_F(LagPlots, OfOneSiteShowEmptyAxes) {
    plot(surveyOfTwoRows());
    plot(madeSurvey({{0, 0, 1, 1, 1}}));
    expectDistances({});
    expectRange(chart, Axis::kX, 0, 1);
    expectRange(chart, Axis::kY, 0, 20);
    EXPECT_TRUE(chart.isVisible());
}

TEST_F(LagPlots, ReadOutTheGapUnderThePointer) {
    plot(surveyOfTwoRows());
    pointAt(chart, pixelOf(chart, Chart2D::kData, 1, 2));
    EXPECT_EQ(chart.footerText(),
              u"Site sequence number = 2, Distance = 10.00, Row #1, Site # 1003, X = 20.00, Y = 0.00"_s);
    pointAt(chart, pixelOf(chart, Chart2D::kData, 2, 1));
    EXPECT_EQ(chart.footerText(), QString());
    pointAt(chart, pixelOf(chart, Chart2D::kData, 1, 2));
    main.mnuTrue_Dis->trigger();  // a new plot has not been read yet
    EXPECT_EQ(chart.footerText(), QString());
}

TEST_F(LagPlots, ReadOutADistanceUponTheRedLineAndInACloserView) {
    Survey survey = surveyOfTwoRows();
    survey.MinDistance = 10;
    plot(survey);
    pointAt(chart, pixelOf(chart, Chart2D::kData, 1, 4));
    EXPECT_EQ(chart.footerText(),
              u"Site sequence number = 4, Distance = 10.00, Row #2, Site # 1005, X = 10.00, Y = 40.00"_s);
    const QPoint before = pixelOf(chart, Chart2D::kData, 1, 3);
    QTest::keyClick(&chart, Qt::Key_Plus);
    const QPoint after = pixelOf(chart, Chart2D::kData, 1, 4);
    ASSERT_NE(before, after);
    pointAt(chart, after);
    EXPECT_TRUE(chart.footerText().startsWith(u"Site sequence number = 4, "_s))
        << chart.footerText().toStdString();
    main.mnuX_Dis->trigger();
    pointAt(chart, pixelOf(chart, Chart2D::kData, 1, 3));
    EXPECT_TRUE(chart.footerText().startsWith(u"Site sequence number = 3, Distance = 0.00, "_s));
}

TEST_F(LagPlots, ReadOutOtherDistancesInTheSameView) {
    const auto distanceAt = [this](qsizetype point) {
        pointAt(chart, pixelOf(chart, Chart2D::kData, 1, point));
        return chart.footerText().section(u", "_s, 1, 1);
    };
    plot(surveyOfTwoRows());
    EXPECT_EQ(distanceAt(3), u"Distance = 40.00"_s);
    EXPECT_EQ(distanceAt(2), u"Distance = 10.00"_s);
    Survey other = surveyOfTwoRows();
    other.SiteData(kX, 2) = 10;
    other.SiteData(kY, 2) = 40;  // 40 m from the site before, 10 m to the next
    plot(other);
    EXPECT_EQ(distanceAt(2), u"Distance = 40.00"_s);
    EXPECT_EQ(distanceAt(3), u"Distance = 10.00"_s);
}

TEST_F(LagPlots, ShowATypedDistanceOfTheSameMeasureUntilItIsGone) {
    plot(surveyOfTwoRows());
    const QImage without = chart.grab().toImage();
    lag.showTyped(2, 30);
    EXPECT_EQ(chart.grab().toImage(), without) << "a distance along X";
    lag.showTyped(1, 30);
    const QImage with = chart.grab().toImage();
    EXPECT_NE(with, without);
    main.mnuX_Dis->trigger();
    main.mnuTrue_Dis->trigger();
    EXPECT_EQ(chart.grab().toImage(), with) << "the plot that is shown later";
    lag.showTyped(1, {});
    EXPECT_EQ(chart.grab().toImage(), without);
    EXPECT_EQ(chart.seriesCount(Chart2D::kData), 2);
}

}  // namespace tessel
