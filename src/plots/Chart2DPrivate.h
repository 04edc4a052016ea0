// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/palette16.h"
#include "base/run_time_error.h"
#include "drawing/Pixels.h"
#include "plots/Chart2D.h"
#include "plots/ChartFrame.h"
#include "plots/ChartPlot.h"

#include <QImage>
#include <QPainter>
#include <QPointer>

#include <optional>
#include <utility>

namespace tessel {

// For the files of Chart2D alone.

struct Chart2D::Private {
    /// In pixels.
    struct Box {
        QPointF pressed;   ///< it may begin beside the plot area, where no room is left beside a point
        QPointF from, to;  ///< within it
        bool taking = false;
        /// More than a hand shakes.
        bool isDrawn() const { return (to - from).manhattanLength() > kPickDistance; }
    };

    explicit Private(Chart2D& owner) : chart(owner) {}

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

    /// The plot will be laid out anew when that is needed, and drawn by the next paint event.
    void markStale() {
        layout.reset();
        stale = true;
        if (batches == 0) chart.update();
    }

    void setFont() {
        frame.setFont(chart.font(), chart.logicalDpiY());
        plot.setFont(frame.textFont());
        markStale();
    }

    QRect place() const { return frame.plotRect(chart.rect()); }

    /// `other` is the size of the plot that this one is aligned with.
    ChartPlot::Layout layOut(const QRect& where, const QSize& other) const {
        const ChartPlot::Sides own = plot.sidesFor(where.size());
        return plot.layOut(where, aligned ? own.with(aligned->d_->plot.sidesFor(other)) : own);
    }

    /// For the chart's present size, whether it has been drawn or not: a hidden widget learns its size only
    /// when shown.
    const ChartPlot::Layout& laidOut() {
        if (layout && layout->place == place()) return *layout;
        layout = layOut(place(), aligned ? aligned->d_->place().size() : QSize());
        const ChartPlot::Sides own = plot.sidesFor(place().size());
        if (!(std::exchange(sides, own) == own) && aligned) aligned->d_->markStale();
        return *layout;
    }

    PixelMap map(Group g) { return plot.map(laidOut(), g == kHighlight ? ChartViews::kY2 : ChartViews::kY); }

    void showViews() {
        markStale();
        if (!companion) return;
        companion->d_->views.setView(ChartViews::kX, views.view(ChartViews::kX));
        companion->d_->markStale();
    }

    /// The plot as a picture, unless it is held or has not changed.
    void draw() {
        const double scale = chart.devicePixelRatioF();
        if (batches > 0 || (!stale && picture.devicePixelRatio() == scale)) return;
        const QSize size = nearestSize(QSizeF(chart.size()) * scale);
        if (picture.size() != size) picture = QImage(size, QImage::Format_RGB32);
        if (picture.isNull()) return;  // no memory for it, or nothing to show
        picture.setDevicePixelRatio(scale);
        plot.draw(picture, laidOut());
        stale = false;
        Q_EMIT chart.redrawn();
    }

    // Chart2DHand.cpp
    void paintLevel(QPainter& painter);
    void paintLevelText(QPainter& painter, const QPointF& end);
    void paintBox(QPainter& painter) const;
    bool isAtLevel(const QPointF& pixel);
    QRectF drawnBox() const;
    void updateBox() const;

    Chart2D& chart;
    ChartPlot::Groups groups;
    ChartViews views;
    ChartFrame frame;
    ChartPlot plot{views, groups};
    std::optional<ChartPlot::Layout> layout;
    QImage picture;
    std::optional<double> level;
    QString levelText;
    bool levelMovable = false;
    bool movesLevel = false;  ///< the button that moves it is down
    bool offersBoxes = false;
    std::optional<Box> box;  ///< while its button is down
    bool stale = true;
    int batches = 0;
    QPointer<Chart2D> companion;  ///< the chart whose horizontal view is this one's too
    QPointer<Chart2D> aligned;    ///< the chart whose plot has the same sides
    ChartPlot::Sides sides;       ///< those that this plot needed when it was laid out last
};

}  // namespace tessel
