// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPointF>
#include <QSizeF>

#include <cstddef>
#include <functional>
#include <vector>

class QPainter;

namespace tessel {

/// What has been drawn on a picture box, to be drawn again as strokes on paper.
class PaperStrokes {
  public:
    using Stroke = std::function<void(QPainter&)>;

    void clear();
    void add(Stroke stroke) { strokes_.push_back(std::move(stroke)); }
    /// Dots of a pen of this width: squares up to 2 pixels, discs above.
    void addDots(std::vector<QPointF> places, double width, const QColor& colour);
    std::size_t dotCount() const { return dotCount_; }

    void draw(QPainter& painter) const;

  private:
    std::vector<Stroke> strokes_;
    std::size_t dotCount_ = 0;
};

/// Strokes of no length at these places, a few bytes each.
void strokeDots(QPainter& painter, const QPointF* places, std::size_t count);

/// How many pixels to a pixel of 96 an inch a picture among strokes gets: as many as wanted, but of a large
/// one so few that the file of many colours stays below 5 MB.
double pictureResolution(double wanted, const QSizeF& size);

}  // namespace tessel
