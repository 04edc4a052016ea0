// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "drawing/point_raster.h"
#include "plots/chart_series.h"

#include <QColor>
#include <QRectF>

#include <map>
#include <tuple>

class QPainter;

namespace tessel {

/// The colour of a number of the 16-colour palette; only the last four bits of the number count.
QColor paletteColour(int number);

/// True for colours that white paper swallows: their symbols get a thin dark outline.
bool needsOutline(int colour);

/// The colour in which a line of this palette colour is drawn: a pale one darkened.
QColor lineColour(int colour);

/// The dark grey of outlines, axes and letters on the white paper.
QColor chartInk();

/// Width and height of a symbol in device-independent pixels.
double symbolSize(ChartSymbol symbol);

/// Draws one symbol into `box`, a square of symbolSize() on a side (or that times the display's scale).
void paintSymbol(QPainter& painter, const QRectF& box, ChartSymbol symbol, int colour);

/// Whether the edges of a symbol are blended with what lies beneath.
enum class SymbolEdges { kSoft, kHard };

/// Symbols as stamps for a display's scale, each painted the first time it is asked for.
class StampCache {
  public:
    /// The result lives until the next call with another scale.
    const Stamp& stamp(ChartSymbol symbol, int colour, SymbolEdges edges, double scale);

  private:
    double scale_ = 0;
    std::map<std::tuple<ChartSymbol, int, SymbolEdges>, Stamp> stamps_;
};

}  // namespace tessel
