// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/PlotWindow.h"

#include "app/frmMain.h"
#include "support/Pixels.h"
#include "support/survey_under_test.h"

namespace tessel {

void openSurvey(frmMain& main, const Survey& survey) {
    surveyUnderTest() = survey;
    main.menusFollow(MenuEvent::kSitesImported);
}

QPoint pixelOf(const Chart2D& chart, Chart2D::Group group, int series, qsizetype point) {
    // A chart that has just been shown gets its place with the next events.
    QCoreApplication::processEvents();
    const Chart2D::Point at = chart.point(group, series, point);
    const QPointF pixel = chart.dataToPixel(at.x, at.y);
    return {static_cast<int>(pixel.x()), static_cast<int>(pixel.y())};
}

void pointAt(QWidget& widget, QPoint pixel) {
    // Not by way of the screen's pointer, which cannot leave the screen that a test happens to have.
    QMouseEvent move(QEvent::MouseMove, pixel, widget.mapToGlobal(QPointF(pixel)), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&widget, &move);
}

void clickAt(Chart2D& chart, QPoint pixel) {
    // Two quick clicks at one place would be a double click.
    QTest::mouseClick(&chart, Qt::LeftButton, {}, pixel, QApplication::doubleClickInterval() + 1);
}

void clickPoint(Chart2D& chart, int series, qsizetype point) {
    clickAt(chart, pixelOf(chart, Chart2D::kData, series, point));
}

void expectRange(const Chart2D& chart, Chart2D::Axis axis, double from, double to) {
    EXPECT_DOUBLE_EQ(chart.axisRange(axis).from, from);
    EXPECT_DOUBLE_EQ(chart.axisRange(axis).to, to);
}

QImage printed(Chart2D& chart, const QSize& size, double resolution) {
    QImage paper = whitePaper(size, resolution);
    QPainter painter(&paper);
    chart.print(painter, QRectF(paper.rect()));
    return paper;
}

std::vector<Chart2D::Point> pointsOf(const Chart2D& chart, Chart2D::Group group, int series) {
    std::vector<Chart2D::Point> points;
    for (qsizetype i = 1; i <= chart.pointCount(group, series); ++i)
        points.push_back(chart.point(group, series, i));
    return points;
}

}  // namespace tessel
