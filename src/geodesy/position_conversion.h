// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "geodesy/positions.h"
#include "journal/journal.h"

#include <optional>
#include <string>
#include <vector>

namespace tessel {

/// What the user says of a survey's positions.
struct PositionRequest {
    PositionKind kind = PositionKind::kGrid;
    bool latitudeFirst = false;  ///< of degrees: X holds the latitude, Y the longitude
    int system = 0;  ///< EPSG number: of kCRS the one that X and Y are in, of degrees the one that they get

    bool converts() const { return kind == PositionKind::kDegrees || kind == PositionKind::kDegreesMinutes; }
};

/// What positions are like when they are taken for degrees.
struct PositionCheck {
    SiteIndex positions = 0;          ///< that can be converted
    SiteIndex outOfRange = 0;         ///< latitude above 90, longitude above 180, minutes of 60 or more
    SiteIndex missing = 0;            ///< at 0, 0
    std::vector<SiteIndex> firstBad;  ///< of both, five at most
    /// The medians of those that can be converted; none without any.
    std::optional<GeographicPosition> middle;
};

/// One pass over X and Y, and a copy of both for the medians. Requires kDegrees or kDegreesMinutes.
PositionCheck checkPositions(const Survey& survey, const PositionRequest& request);

/// The positions that will be kept as they are, in words, with the lines of the sensor file on which the
/// first stand; empty when there are none.
std::string badPositionsInWords(const Survey& survey, const PositionCheck& check);

/// X and Y as a request makes them, the survey left alone.
struct ConvertedPositions {
    PositionRequest request;
    std::vector<double> x, y;  ///< as long as the storage; empty where the request converts nothing
    SiteIndex kept = 0;        ///< positions that could not be converted and are as they were
};

/// Throws RunTimeError when the system is not known. 16 bytes a site; one pass of the library over them.
ConvertedPositions convertedPositions(const Survey& survey, const PositionRequest& request);

/// Whether the survey would be another one.
bool changesSurvey(const Survey& survey, const PositionRequest& request);

/// Puts the positions in the place of those that there are and says what they are. Rows stay as they are;
/// distances by the measure in force are calculated anew and the others forgotten. Where memory runs out
/// nothing has been changed.
Difference replacePositions(Survey& survey, ConvertedPositions positions);

/// The act, in words. Requires the survey before it.
ActDescription describe(const ConvertedPositions& positions);

}  // namespace tessel
