// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "geodesy/positions.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

// Coordinate systems and the ways between them, as the PROJ library knows them. Where it is missing no system
// is known.

/// A projected coordinate system.
struct CoordinateSystem {
    int number = 0;    ///< EPSG
    std::string name;  ///< "WGS 84 / UTM zone 30N"
    std::string area;  ///< where it is used, in words
    /// The box around that, in degrees; the western edge of one across the date line is the larger number.
    double west = 0, south = 0, east = 0, north = 0;

    bool isUsedAt(GeographicPosition position) const;
};

/// "EPSG:32630  WGS 84 / UTM zone 30N"
std::string shownName(const CoordinateSystem& system);
/// The same of a number, which alone stands there for a system that is not known.
std::string shownName(int number);

/// All projected coordinate systems in force that have an EPSG number, by their numbers; none when the
/// library does not find its database.
const std::vector<CoordinateSystem>& coordinateSystems();
/// The one of this number, or null.
const CoordinateSystem* coordinateSystem(int number);

/// Those whose number begins with the text, or whose name holds each of its words, upper and lower case
/// alike; without a text those that are used at the position. Those used there come first, else they are in
/// the order of their numbers. At most `most`.
std::vector<const CoordinateSystem*> findCoordinateSystems(std::string_view text,
                                                           const std::optional<GeographicPosition>& position,
                                                           std::size_t most);

/// Why positions cannot be in this system: a unit that is not the metre, or no map; empty if they can.
std::string whyNotInMetres(int number);

/// What horizontal positions in a system are.
enum class SystemKind {
    kUnknown,
    kMetres,  ///< easting and northing in metres
    kOther,   ///< degrees, or another unit; Transformation::toDegrees makes degrees of WGS 84 of them
    kNone     ///< heights, or distances from the middle of the earth
};
/// The horizontal part of a system.
struct HorizontalSystem {
    SystemKind kind = SystemKind::kUnknown;
    int number = 0;  ///< EPSG; 0 for none
};
/// Of the system of this number; where that is not known, of the one that the well-known text defines.
HorizontalSystem horizontalSystem(int number, const std::string& definition);

/// What other programs are told of a system.
struct SystemDefinition {
    std::string name;  ///< "WGS 84 / UTM zone 30N"
    std::string text;  ///< well-known text, version 1
};
/// Of a system that is not known the name is "EPSG:" and the number, and the text "undefined".
SystemDefinition definitionOf(int number);

/// The way from degrees of WGS 84 (longitude, latitude) to easting and northing in a system, or longitude and
/// latitude in one of degrees, and back.
class Transformation {
  public:
    /// Throws RunTimeError when the system is not known or there is no way.
    explicit Transformation(int number);
    ~Transformation();
    Transformation(const Transformation&) = delete;
    Transformation& operator=(const Transformation&) = delete;

    /// Converts so many positions in place in one pass; both coordinates of one that cannot be converted are
    /// infinite then. One that is not finite stays so.
    void toMetres(double* x, double* y, std::size_t count) const;
    void toDegrees(double* x, double* y, std::size_t count) const;

  private:
    struct Way;
    std::unique_ptr<Way> way_;
};

}  // namespace tessel
