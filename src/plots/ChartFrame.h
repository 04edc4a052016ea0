// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plots/chart_series.h"

#include <QFont>
#include <QRect>
#include <QString>

#include <array>
#include <vector>

class QPainter;

namespace tessel {

/// What surrounds the plot of a chart: the header with the explanation of named series at its right, and the
/// footer. It knows where the plot goes and paints the rest, alike on the screen and on paper.
class ChartFrame {
  public:
    /// A page part in pixels of 96 to the inch, and how much of the painter's units each of them is.
    struct Sheet {
        QSize size;
        double xScale = 1;
        double yScale = 1;
    };
    static Sheet sheet(const QPainter& painter, const QRectF& target);

    /// The window's font and the dots an inch that its point size means.
    void setFont(const QFont& font, int dotsPerInch);
    /// The same font by its pixels, so that no printer scales it a second time.
    QFont textFont() const { return textFont_; }

    /// `shorter` is painted where the text does not fit.
    void setHeader(const QString& text, const QString& shorter = {}) {
        header_ = text;
        shorterHeader_ = shorter;
    }
    const QString& header() const { return header_; }
    void setHeaderFont(double pointSize, bool bold);
    void setFooter(const QString& text) { footer_ = text; }
    const QString& footer() const { return footer_; }

    QRect headerRect(const QRect& whole) const;
    QRect footerRect(const QRect& whole) const;
    QRect plotRect(const QRect& whole) const;

    /// Paints over white ground.
    void paint(QPainter& painter, const QRect& whole,
               const std::array<std::vector<ChartSeries>, 2>& groups) const;

  private:
    QString headerFor(int width) const;
    int paintNames(QPainter& painter, const QRect& box,
                   const std::array<std::vector<ChartSeries>, 2>& groups) const;
    int paintName(QPainter& painter, const QRect& box, const ChartSeries& series) const;

    QFont textFont_;
    QFont headerFont_;
    double headerPointSize_ = 12;
    bool headerBold_ = true;
    int dotsPerInch_ = 96;
    QString header_;
    QString shorterHeader_;
    QString footer_;
};

}  // namespace tessel
