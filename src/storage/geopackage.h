// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/database.h"

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tessel {

// What makes a database a GeoPackage (OGC 12-128r18, version 1.3.1).

inline constexpr std::int64_t kGeoPackageId = 0x47504B47;  // "GPKG"

/// A coordinate reference system. Without a number one of metres in an unnamed grid.
struct SpatialReference {
    int epsg = 0;
    std::string name;        ///< "WGS 84 / UTM zone 30N"
    std::string definition;  ///< well-known text, version 1

    /// Its number in the file.
    int id() const { return epsg > 0 ? epsg : -1; }
};

/// From the smallest to the largest position; none as long as nothing has been added.
struct Extent {
    double minX = std::numeric_limits<double>::infinity(), minY = minX, maxX = -minX, maxY = -minX;

    void add(double x, double y);
    bool isEmpty() const { return !(minX <= maxX && minY <= maxY); }
};

/// A point as its column "geom" holds it: a header of 8 bytes, and the point in well-known binary.
class PointGeometry {
  public:
    explicit PointGeometry(int spatialReference);
    /// Valid until the next call.
    std::string_view at(double x, double y);

  private:
    std::array<char, 29> bytes_{};
};

/// The position of such a geometry, whoever has made it: of a point, whatever it has beside X and Y, or of
/// several of which there is one. Nothing of any other, of an empty one, and of what is no geometry.
std::optional<std::pair<double, double>> pointIn(std::string_view geometry);

/// Makes an empty database a GeoPackage with these systems: the three of the standard and this one.
void beginGeoPackage(Database& database, const SpatialReference& reference);

/// What a table of a GeoPackage is said to be.
struct TableDescription {
    std::string name, title, text;
    std::string lastChange;  ///< utcText
};
/// Enters a table with points, or one without, into the contents. The table is the caller's.
void addLayer(Database& database, const TableDescription& table, const SpatialReference& reference,
              const Extent& extent);
void addAttributes(Database& database, const TableDescription& table);

}  // namespace tessel
