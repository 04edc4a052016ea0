// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plots/axis_ticks.h"

#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QString>

class QPainter;

namespace tessel {

// Ticks, labels and titles of axes, alike on the screen and on paper.

inline constexpr int kTickLength = 5;
inline constexpr int kLabelPadding = 4;
inline constexpr int kTitlePadding = 5;

/// The nearest place on a whole dot of the painter's device, on which thin level and upright lines are sharp.
QPointF sharp(const QPainter& painter, const QPointF& place);

void drawLabel(QPainter& painter, const QRectF& box, Qt::Alignment alignment, const QString& text);

int lineHeight(const QFont& font);
double labelWidth(const std::string& label, const QFont& font);
/// The room for labels of this width in whole steps of some letters, so that the plot does not jump each
/// time that labels grow or shrink by one while it is being moved.
int steadyWidth(double width, const QFont& font);

/// Where the ticks of a level axis of this width stand, or of an upright one of this height, in pixels.
TickStep levelTicks(const Interval& view, int width, const QFont& font);
TickStep uprightTicks(const Interval& view, int height, const QFont& font);

/// An axis at the left or the right edge of what it measures.
struct UprightAxis {
    enum class Side { kLeft, kRight };
    Side side = Side::kLeft;
    Interval view;
    QString title;
    QFont font;

    /// The room that it takes at that side where it has this height.
    int room(int height) const;
    /// At this side of the map's area.
    void paint(QPainter& painter, const TickStep& ticks, const PixelMap& pixels) const;

  private:
    double widestLabel(const TickStep& ticks) const;
};

}  // namespace tessel
