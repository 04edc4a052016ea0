// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/PlotWindow.h"

#include "app/frmMain.h"
#include "support/survey_under_test.h"

namespace tessel {

void openSurvey(frmMain& main, const Survey& survey) {
    surveyUnderTest() = survey;
    main.menusFollow(MenuEvent::kSitesImported);
}

void clickButton(QWidget& window, const char* name) {
    auto* const button = window.findChild<QAbstractButton*>(QString::fromLatin1(name));
    ASSERT_NE(button, nullptr) << name;
    ASSERT_TRUE(button->isVisible()) << name << " is hidden";
    ASSERT_TRUE(button->isEnabled()) << name << " is disabled";
    // A radio button is pressed on its indicator, not in the empty space behind its caption.
    const bool radio = button->inherits("QRadioButton");
    QTest::mouseClick(button, Qt::LeftButton, {}, radio ? QPoint(8, button->height() / 2) : QPoint());
}

QPoint pixelOf(const Chart2D& chart, Chart2D::Group group, int series, qsizetype point) {
    // A chart that has just been shown gets its place with the next events.
    QCoreApplication::processEvents();
    const Chart2D::Point at = chart.point(group, series, point);
    const QPointF pixel = chart.dataToPixel(at.x, at.y);
    return {static_cast<int>(pixel.x()), static_cast<int>(pixel.y())};
}

void pointAt(Chart2D& chart, QPoint pixel) {
    // Not by way of the screen's pointer, which cannot leave the screen that a test happens to have.
    QMouseEvent move(QEvent::MouseMove, pixel, chart.mapToGlobal(QPointF(pixel)), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&chart, &move);
}

void clickAt(Chart2D& chart, QPoint pixel) {
    // Two quick clicks at one place would be a double click.
    QTest::mouseClick(&chart, Qt::LeftButton, {}, pixel, QApplication::doubleClickInterval() + 1);
}

void clickPoint(Chart2D& chart, int series, qsizetype point) {
    clickAt(chart, pixelOf(chart, Chart2D::kData, series, point));
}

std::vector<Chart2D::Point> pointsOf(const Chart2D& chart, Chart2D::Group group, int series) {
    std::vector<Chart2D::Point> points;
    for (qsizetype i = 1; i <= chart.pointCount(group, series); ++i)
        points.push_back(chart.point(group, series, i));
    return points;
}

}  // namespace tessel
