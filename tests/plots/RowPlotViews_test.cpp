// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/journal.h"
#include "plots/chart_views.h"
#include "support/Pixels.h"
#include "support/RowPlots.h"

namespace tessel {

namespace {

// What the horizontal axis shows between the sides of the plot.
void expectSameHorizontalView(const Chart2D& a, const Chart2D& b) {
    EXPECT_EQ(a.views().view(ChartViews::kX), b.views().view(ChartViews::kX));
}

// Dark places, each as wide as a line, along a row or column of pixels.
int linesAlong(const QImage& strip) {
    int lines = 0;
    bool within = false;
    for (int i = 0; i < strip.width() * strip.height(); ++i) {
        const bool dark = qGray(strip.pixel(i % strip.width(), i / strip.width())) < 128;
        lines += dark && !within ? 1 : 0;
        within = dark;
    }
    return lines;
}

// Labels stand at every tick, and ticks reach out of the axes.
void expectTwoTicksOnEachAxis(Chart2D& chart) {
    const Interval x = chart.axisRange(Chart2D::Axis::kX), y = chart.axisRange(Chart2D::Axis::kY);
    const QImage image = chart.grab().toImage();
    const double dots = image.devicePixelRatio();
    const QPoint corner = (chart.dataToPixel(x.from, y.from) * dots).toPoint();
    const int top = static_cast<int>((chart.dataToPixel(x.from, y.to).y() - 2) * dots);
    const int out = static_cast<int>(3 * dots);
    EXPECT_GE(linesAlong(image.copy(corner.x(), corner.y() + out, image.width() - corner.x(), 1)), 2)
        << chart.width();
    EXPECT_GE(linesAlong(image.copy(corner.x() - out, top, 1, corner.y() + out - top)), 2) << chart.height();
}

}  // namespace

TEST_F(OpenRowPlots, TakeTheKeyboardBackFromEveryButtonThatDrawsARow) {
    for (const char* button : {"Command2", "Command2", "Command1"}) {
        click(button);
        EXPECT_TRUE(profile.hasFocus()) << button;
    }
    typeRow(u"3"_s);
    click("Command3");
    EXPECT_TRUE(profile.hasFocus());
    typeRow(u"1"_s);
    QTest::keyClick(editor.Text1, Qt::Key_Return);
    EXPECT_TRUE(profile.hasFocus());
    deletePoints({2});
    EXPECT_TRUE(profile.hasFocus());
    click("Command2");
    deletePoints({1});
    ASSERT_EQ(theSurvey().NumRows, 2);
    EXPECT_TRUE(profile.hasFocus());
}

TEST_F(OpenRowPlots, AreFinishedByEnterAndNeverByTheSpaceBar) {
    QTest::keyClick(&profile, Qt::Key_Right);
    editor.Command4->setFocus();
    QTest::keyClick(editor.Command4, Qt::Key_Space);
    EXPECT_TRUE(editor.isVisible());
    EXPECT_TRUE(profile.hasFocus());
    EXPECT_EQ(selected(), std::vector<SiteIndex>{1});
    editor.Command4->setFocus();
    QTest::keyClick(editor.Command4, Qt::Key_Return);
    EXPECT_FALSE(editor.isVisible());
}

TEST_F(OpenRowPlots, ReadOutNothingOnceThePointerHasLeft) {
    for (Chart2D* const chart : {&profile, &map}) {
        pointAt(*chart, pixelOf(*chart, Chart2D::kData, 1, 2));
        ASSERT_TRUE(chart->footerText().startsWith(u"UTM X = 110.00"_s));
        leave(*chart);
        EXPECT_EQ(chart->footerText(), u"No Point Selected"_s);
        EXPECT_EQ(chart->cursor().shape(), Qt::ArrowCursor);
    }
}

TEST_F(OpenRowPlots, KeepTheReadOutOfTheKeysWhenThePointerLeaves) {
    pointAt(profile, pixelOf(profile, Chart2D::kData, 1, 4));
    QTest::keyClick(&profile, Qt::Key_Right);
    pointAt(map, pixelOf(map, Chart2D::kData, 1, 4));
    leave(profile);
    leave(map);
    EXPECT_EQ(profile.footerText(), u"UTM X = 100.00, ECa = 20.00"_s);
    EXPECT_EQ(map.footerText(), u"UTM X = 100.00, UTM Y = 10.00"_s);
    clickPoint(profile, 1, 3);
    leave(profile);
    EXPECT_EQ(profile.footerText(), u"No Point Selected"_s);
}

TEST_F(OpenRowPlots, LookCloserAlongTheRowTogether) {
    const Interval wholeOnMap = map.views().view(ChartViews::kY);
    turnWheel(profile, pixelOf(profile, Chart2D::kData, 1, 2), 240);
    EXPECT_TRUE(map.isZoomed());
    EXPECT_EQ(map.views().view(ChartViews::kY), wholeOnMap);
    expectSameHorizontalView(profile, map);
    const Interval before = map.views().view(ChartViews::kX);
    drag(map, Qt::RightButton, map.rect().center(), map.rect().center() + QPoint(40, 0));
    EXPECT_FALSE(map.views().view(ChartViews::kX) == before);
    expectSameHorizontalView(map, profile);
    QTest::keyClick(&map, Qt::Key_Right, Qt::ControlModifier);
    QTest::keyClick(&profile, Qt::Key_Plus);
    expectSameHorizontalView(map, profile);
    QTest::keyClick(&profile, Qt::Key_Home);
    EXPECT_FALSE(profile.isZoomed());
    EXPECT_FALSE(map.isZoomed());
}

TEST_F(OpenRowPlots, LookCloserAtTheReadingsAlone) {
    turnWheel(profile, QPoint(3, profile.height() / 2), 240);
    EXPECT_TRUE(profile.isZoomed());
    EXPECT_FALSE(map.isZoomed());
}

TEST_F(RowPlots, KeepTheViewWhenSitesOfTheRowAreDeleted) {
    for (const int row : {1, 2}) {
        Survey survey = longRowSurvey(120);
        if (row == 2)
            for (SiteIndex i = 40; i < survey.NumSites; ++i)
                survey.SiteData(kRow, i) = 2;
        survey.NumRows = row;
        openByX(survey);
        if (row == 2) click("Command2");
        turnWheel(profile, pixelOf(profile, Chart2D::kData, 1, 20), 240);
        const ChartViews seen = profile.views(), seenOnMap = map.views();
        deletePoints({20});
        EXPECT_EQ(theSurvey().NumSites, 119);
        EXPECT_TRUE(profile.isZoomed());
        for (const auto axis : {ChartViews::kX, ChartViews::kY})
            EXPECT_EQ(profile.views().view(axis), seen.view(axis));
        EXPECT_EQ(map.views().view(ChartViews::kX), seenOnMap.view(ChartViews::kX));
        QTest::keyClick(&profile, Qt::Key_Home);
        EXPECT_FALSE(profile.isZoomed());
    }
}

TEST_F(RowPlots, KeepThePartOfTheRowWhereTheReadingsAreGoneThatWereLookedAt) {
    Survey survey = longRowSurvey(120);
    survey.SiteData(kEM1, 19) = 500;
    openByX(survey);
    turnWheel(profile, pixelOf(profile, Chart2D::kData, 1, 20), 720);
    const Interval seen = map.views().view(ChartViews::kX);
    ASSERT_GT(profile.views().view(ChartViews::kY).from, 20);
    deletePoints({20});
    EXPECT_EQ(profile.views().view(ChartViews::kX), seen);
    EXPECT_EQ(map.views().view(ChartViews::kX), seen);
    EXPECT_LT(profile.views().view(ChartViews::kY).from, 0);
    EXPECT_LT(profile.views().view(ChartViews::kY).to, 20);
}

TEST_F(OpenRowPlots, FitTheRowAnewAfterADeletionUnlessTheUserLooksCloser) {
    deletePoints({5});
    EXPECT_FALSE(profile.isZoomed());
    expectRange(profile, Chart2D::Axis::kX, 98.5, 131.5);
    turnWheel(map, pixelOf(map, Chart2D::kData, 1, 2), 240);
    click("Command2");
    EXPECT_FALSE(map.isZoomed());
}

TEST_F(RowPlots, HaveTwoLabelsOnEachAxisAtEverySize) {
    Survey survey = threeRowSurvey();
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        survey.SiteData(kX, i) = 436000 + survey.SiteData(kX, i) / 100;
        survey.SiteData(kY, i) += 5512000;
    }
    openByX(survey);
    const QSize smallest = profile.minimumSizeHint();
    for (const bool byX : {true, false}) {
        (byX ? main.mnuX : main.mnuY)->trigger();
        for (int step = 0; step < 60; ++step)
            for (Chart2D* const chart : {&map, &profile}) {
                for (Chart2D* const both : {&map, &profile})
                    both->resize(smallest + QSize(11 * step, 7 * step));
                expectTwoTicksOnEachAxis(*chart);
            }
    }
}

TEST_F(OpenRowPlots, NameRowAndCountInAHeaderThatMustBeShortened) {
    const auto header = [this] {
        QImage image = map.grab().toImage();
        return image.copy(QRect(0, 0, image.width(), int(28 * image.devicePixelRatio())));
    };
    map.resize(map.minimumSizeHint());
    const QImage narrow = header();
    map.setHeaderText(u"Row #1 (5 points)"_s);
    EXPECT_EQ(narrow, header());
}

}  // namespace tessel
