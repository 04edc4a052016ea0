// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

// What a pair of numbers is as a position on the earth.

/// What X and Y of a survey are taken for.
enum class PositionKind {
    kGrid,            ///< metres in a grid without a name
    kDegrees,         ///< degrees of WGS 84
    kDegreesMinutes,  ///< the same as loggers write them, degrees and decimal minutes in one number:
                      ///< ddmm.mmmm
    kCRS              ///< metres in a coordinate system with an EPSG number
};

/// The EPSG number of degrees of WGS 84.
inline constexpr int kWgs84 = 4326;

/// A position in degrees of WGS 84, positive to the east and north.
struct GeographicPosition {
    double longitude = 0, latitude = 0;
};

/// Degrees from ddmm.mmmm, the sign before all: -220.5 is -2 degrees and 20.5 minutes, -2.341666...
/// No number (NaN) where the minutes would be 60 or more.
double degreesFromMinutes(double degreesMinutes);

/// Longitude within 180 and latitude within 90 degrees. False for what is no number.
bool isOnEarth(GeographicPosition position);
/// At 0, 0, as loggers write a position that is missing.
bool isMissingFix(GeographicPosition position);

/// The EPSG number of the UTM zone in which a position lies, by the rule and its exceptions for Norway and
/// Svalbard: 32601 to 32660 north and 32701 to 32760 south of the equator; of the polar system beyond 84
/// north (32661) and 80 south (32761). Requires a position on the earth.
int utmZoneAt(GeographicPosition position);

}  // namespace tessel
