// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/run_time_error.h"
#include "plots/Chart2D.h"
#include "plots/ChartFrame.h"
#include "plots/ChartPlot.h"
#include "plots/chart_views.h"

#include <QPointer>

#include <array>
#include <optional>
#include <vector>

namespace tessel {

// For the files of Chart2D alone.

struct Chart2D::Private {
    explicit Private(Chart2D* chart) : plot(new ChartPlot(groups[0], groups[1], chart)) {}

    std::vector<ChartSeries>& group(Group g) {
        if (g != kData && g != kHighlight) throw RunTimeError::subscriptOutOfRange();
        return groups[g == kData ? 0 : 1];
    }

    ChartSeries& series(Group g, int number) {
        std::vector<ChartSeries>& all = group(g);
        if (number < 1 || static_cast<std::size_t>(number) > all.size())
            throw RunTimeError::subscriptOutOfRange();
        return all[static_cast<std::size_t>(number) - 1];
    }

    QCPAxis* plotAxis(Axis a) {
        if (a == Axis::X) return plot->xAxis;
        return a == Axis::Y ? plot->yAxis : plot->yAxis2;
    }

    void showViews() {
        plot->setViews(views.view(ChartViews::kX), views.view(ChartViews::kY), views.view(ChartViews::kY2));
    }

    /// In pixels of the chart. The plot is placed first: a hidden widget learns its size only when shown.
    PixelMap map(const QRect& whole, bool highlight) {
        const QRect place = frame.plotRect(whole);
        if (plot->geometry() != place) plot->setGeometry(place);
        PixelMap pixels = plot->map(highlight);
        pixels.xShift += place.left();
        pixels.yShift += place.top();
        pixels.area.left += place.left();
        pixels.area.right += place.left();
        pixels.area.top += place.top();
        pixels.area.bottom += place.top();
        return pixels;
    }

    void zoom(double xFraction, double xFactor, double yFraction, double yFactor) {
        views.zoom(xFraction, xFactor, yFraction, yFactor);
        showViews();
        shareHorizontalView();
    }

    void move(double xFraction, double yFraction) {
        views.move(xFraction, yFraction);
        showViews();
        shareHorizontalView();
    }

    void shareHorizontalView() {
        if (!companion) return;
        companion->d_->views.setView(ChartViews::kX, views.view(ChartViews::kX));
        companion->d_->showViews();
    }

    std::array<std::vector<ChartSeries>, 2> groups;
    ChartViews views;
    int batches = 0;
    ChartFrame frame;
    ChartPlot* plot;
    QPointer<Chart2D> companion;    ///< the chart whose horizontal view is this one's too
    std::optional<QPoint> dragged;  ///< where the pointer was when the view was last moved
};

}  // namespace tessel
