// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "plots/Chart2D.h"

namespace tessel {

class frmMain;

// What a user does with the plots of the main window: keys, clicks and a look at the charts.

/// Puts a survey in place as the one of the process, with the menus as after an import.
void openSurvey(frmMain& main, const Survey& survey);

/// The pixel of a point that the chart shows.
QPoint pixelOf(const Chart2D& chart, Chart2D::Group group, int series, qsizetype point);
/// Moves the pointer to a pixel / presses the left button there.
void pointAt(QWidget& widget, QPoint pixel);
void clickAt(Chart2D& chart, QPoint pixel);
/// Clicks a point of the data.
void clickPoint(Chart2D& chart, int series, qsizetype point);

void expectRange(const Chart2D& chart, Chart2D::Axis axis, double from, double to);

/// The chart alone on paper of this size and resolution in dots per inch.
QImage printed(Chart2D& chart, const QSize& size, double resolution);

/// The points of a series, from point 1 on.
std::vector<Chart2D::Point> pointsOf(const Chart2D& chart, Chart2D::Group group, int series);

}  // namespace tessel
