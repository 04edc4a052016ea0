// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "rows/row_sites.h"

namespace tessel {

/// The axis limits that a plot sets. A minimum may equal its maximum or lie above it: the rules for rows
/// whose values are all equal are kept for negative values too. What would lie beyond all Doubles is the
/// largest one.
struct PlotLimits {
    double PlotXMin = 0;
    double PlotXMax = 0;
    double PlotYMin = 0;
    double PlotYMax = 0;
    bool operator==(const PlotLimits&) const = default;
};

/// The limits of the last plot drawn, shared by the survey grid plot and the row plots.
PlotLimits& thePlotLimits();

/// Row profile: the along-row coordinate (metres) and the readings (mS/m; EM1 and, with TwoEMColumns, EM2). A
/// row of one site gets 200 m to either side and 0.5 mS/m below its lowest and above its highest reading;
/// else the margins are a twentieth of the coordinates' spread and a tenth of the readings'. A margin of 0
/// becomes a twentieth of the lowest coordinate, or a tenth of the lowest reading. Requires a site.
PlotLimits rowProfileLimits(const Survey& survey, IndexRange sites, bool plotByX);

/// Row map: along-row coordinate and the other one (metres). A row of one site gets 200 m to every side; else
/// both margins are a twentieth of the spread. A margin of 0 becomes a twentieth of the lowest coordinate
/// along the row, or a tenth of the lowest one across it. Requires a site.
PlotLimits rowMapLimits(const Survey& survey, IndexRange sites, bool plotByX);

/// Row map without a site: the survey's extent (MaxX, MinX, ...) and 200 m to every side, X horizontal.
PlotLimits emptiedRowLimits(const Survey& survey);

/// From the smallest to the largest X and Y of all sites, or of some. Throws subscriptOutOfRange without a
/// site.
Rectangle siteExtent(const Survey& survey);
Rectangle siteExtent(const Survey& survey, const IndexRange& sites);

/// The way from places to the pixels of an area in which the extent lies in the middle, as large as it can be
/// with as many pixels to a metre in both directions, large Y up.
PixelMap fittedMap(const Rectangle& area, const Rectangle& extent);

/// Survey grid plot: a twentieth of the spread to every side, and no special case for a spread of 0.
PlotLimits surveyGridLimits(const Rectangle& extent);

}  // namespace tessel
