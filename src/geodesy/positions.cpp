// SPDX-License-Identifier: GPL-3.0-or-later
#include "geodesy/positions.h"

#include "base/whole_numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessel {

namespace {

constexpr int kUtmNorth = 32600, kUtmSouth = 32700, kPolar = 61;

bool isBetween(double value, double from, double below) {
    return value >= from && value < below;
}

// Zone 32 is wider on the coast of Norway; around Svalbard there are four zones where there would be seven.
int zoneAt(const GeographicPosition& at) {
    if (isBetween(at.latitude, 56, 64) && isBetween(at.longitude, 3, 12)) return 32;
    if (at.latitude >= 72 && isBetween(at.longitude, 0, 42))
        return at.longitude < 9 ? 31 : at.longitude < 21 ? 33 : at.longitude < 33 ? 35 : 37;
    return std::clamp(intBelow((at.longitude + 180) / 6) + 1, 1, 60);
}

}  // namespace

double degreesFromMinutes(double degreesMinutes) {
    const double degrees = std::trunc(degreesMinutes / 100);
    const double minutes = degreesMinutes - degrees * 100;
    if (!(std::abs(minutes) < 60)) return std::numeric_limits<double>::quiet_NaN();
    return degrees + minutes / 60;
}

bool isOnEarth(GeographicPosition position) {
    return std::abs(position.longitude) <= 180 && std::abs(position.latitude) <= 90;
}

bool isMissingFix(GeographicPosition position) {
    return position.longitude == 0 && position.latitude == 0;
}

int utmZoneAt(GeographicPosition position) {
    if (position.latitude > 84) return kUtmNorth + kPolar;
    if (position.latitude < -80) return kUtmSouth + kPolar;
    return (position.latitude < 0 ? kUtmSouth : kUtmNorth) + zoneAt(position);
}

}  // namespace tessel
