// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/geopackage.h"

#include "storage/byte_stream.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace tessel {

namespace {

// As Annex C of the standard has them.
constexpr const char* kTables = R"(
PRAGMA application_id = 1196444487;
PRAGMA user_version = 10301;
CREATE TABLE gpkg_spatial_ref_sys (
  srs_name TEXT NOT NULL, srs_id INTEGER NOT NULL PRIMARY KEY, organization TEXT NOT NULL,
  organization_coordsys_id INTEGER NOT NULL, definition TEXT NOT NULL, description TEXT);
CREATE TABLE gpkg_contents (
  table_name TEXT NOT NULL PRIMARY KEY, data_type TEXT NOT NULL, identifier TEXT UNIQUE,
  description TEXT DEFAULT '',
  last_change DATETIME NOT NULL DEFAULT (strftime('%Y-%m-%dT%H:%M:%fZ','now')),
  min_x DOUBLE, min_y DOUBLE, max_x DOUBLE, max_y DOUBLE, srs_id INTEGER,
  CONSTRAINT fk_gc_r_srs_id FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys(srs_id));
CREATE TABLE gpkg_geometry_columns (
  table_name TEXT NOT NULL, column_name TEXT NOT NULL, geometry_type_name TEXT NOT NULL,
  srs_id INTEGER NOT NULL, z TINYINT NOT NULL, m TINYINT NOT NULL,
  CONSTRAINT pk_geom_cols PRIMARY KEY (table_name, column_name),
  CONSTRAINT uk_gc_table_name UNIQUE (table_name),
  CONSTRAINT fk_gc_tn FOREIGN KEY (table_name) REFERENCES gpkg_contents(table_name),
  CONSTRAINT fk_gc_srs FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys (srs_id));
INSERT INTO gpkg_spatial_ref_sys VALUES
  ('Undefined Cartesian SRS', -1, 'NONE', -1, 'undefined', 'undefined Cartesian coordinate reference system'),
  ('Undefined geographic SRS', 0, 'NONE', 0, 'undefined', 'undefined geographic coordinate reference system'),
  ('WGS 84 geodetic', 4326, 'EPSG', 4326, 'GEOGCS["WGS 84",DATUM["WGS_1984",SPHEROID["WGS 84",6378137,298.257223563,AUTHORITY["EPSG","7030"]],AUTHORITY["EPSG","6326"]],PRIMEM["Greenwich",0,AUTHORITY["EPSG","8901"]],UNIT["degree",0.0174532925199433,AUTHORITY["EPSG","9122"]],AXIS["Latitude",NORTH],AXIS["Longitude",EAST],AUTHORITY["EPSG","4326"]]', 'longitude/latitude coordinates in decimal degrees on the WGS 84 spheroid');
)";

template <Number T>
char* put(char* to, T value) {
    const T stored = littleEndian(value);
    std::memcpy(to, &stored, sizeof stored);
    return to + sizeof stored;
}

// Bytes of a geometry, one thing after the other; nothing of what is not there.
class GeometryBytes {
  public:
    explicit GeometryBytes(std::string_view bytes) : bytes_(bytes) {}

    bool skip(std::size_t count) {
        if (count > bytes_.size()) return false;
        bytes_.remove_prefix(count);
        return true;
    }
    template <Number T>
    std::optional<T> take(bool littleEnd) {
        if (bytes_.size() < sizeof(T)) return std::nullopt;
        std::array<char, sizeof(T)> stored;
        std::copy_n(bytes_.data(), sizeof(T), stored.data());
        if (littleEnd != (std::endian::native == std::endian::little)) std::ranges::reverse(stored);
        bytes_.remove_prefix(sizeof(T));
        return std::bit_cast<T>(stored);
    }

  private:
    std::string_view bytes_;
};

// The header, with a box around the geometry or none.
bool skipHeader(GeometryBytes& bytes) {
    constexpr std::array<std::size_t, 5> kBoxes = {0, 32, 48, 48, 64};
    const auto g = bytes.take<char>(true), p = bytes.take<char>(true);
    if (g != 'G' || p != 'P' || !bytes.skip(1)) return false;
    const auto flags = bytes.take<std::uint8_t>(true);
    const std::size_t box = flags ? *flags >> 1 & 7U : kBoxes.size();
    return box < kBoxes.size() && bytes.skip(sizeof(std::int32_t) + kBoxes[box]);
}

std::optional<std::pair<double, double>> takePoint(GeometryBytes& bytes, bool mayBeSeveral) {
    constexpr std::uint32_t kPoint = 1, kPoints = 4;
    const auto order = bytes.take<std::uint8_t>(true);
    const bool littleEnd = order == 1;
    // 1001, 2001 and 3001 have Z, M or both behind X and Y.
    const auto type = bytes.take<std::uint32_t>(littleEnd);
    if (type && *type < 4000 && *type % 1000 == kPoints && mayBeSeveral)
        return bytes.take<std::uint32_t>(littleEnd) == 1U ? takePoint(bytes, false) : std::nullopt;
    if (!type || *type >= 4000 || *type % 1000 != kPoint) return std::nullopt;
    const auto x = bytes.take<double>(littleEnd), y = bytes.take<double>(littleEnd);
    if (!x || !y || std::isnan(*x) || std::isnan(*y)) return std::nullopt;
    return std::pair(*x, *y);
}

Statement& bindDescription(Statement& statement, const TableDescription& table) {
    return statement.bind(0, std::string_view(table.name))
        .bind(1, std::string_view(table.title))
        .bind(2, std::string_view(table.text))
        .bind(3, std::string_view(table.lastChange));
}

}  // namespace

void Extent::add(double x, double y) {
    if (!std::isfinite(x) || !std::isfinite(y)) return;
    minX = std::min(minX, x);
    minY = std::min(minY, y);
    maxX = std::max(maxX, x);
    maxY = std::max(maxY, y);
}

PointGeometry::PointGeometry(int spatialReference) {
    constexpr char kLittleEndian = 1;
    constexpr std::uint32_t kPoint = 1;
    char* next = std::copy_n("GP\0", 3, bytes_.data());
    *next++ = kLittleEndian;  // of a point nothing is gained by an envelope
    next = put(next, std::int32_t{spatialReference});
    *next++ = kLittleEndian;
    put(next, kPoint);
}

std::string_view PointGeometry::at(double x, double y) {
    put(put(bytes_.data() + bytes_.size() - 2 * sizeof(double), x), y);
    return {bytes_.data(), bytes_.size()};
}

std::optional<std::pair<double, double>> pointIn(std::string_view geometry) {
    GeometryBytes bytes(geometry);
    return skipHeader(bytes) ? takePoint(bytes, true) : std::nullopt;
}

void beginGeoPackage(Database& database, const SpatialReference& reference) {
    database.run(kTables);
    if (reference.epsg <= 0 || reference.epsg == 4326) return;
    Statement statement(database, "INSERT INTO gpkg_spatial_ref_sys VALUES (?, ?, 'EPSG', ?, ?, NULL)");
    statement.bind(0, std::string_view(reference.name))
        .bind(1, std::int64_t{reference.epsg})
        .bind(2, std::int64_t{reference.epsg})
        .bind(3, std::string_view(reference.definition))
        .run();
}

void addLayer(Database& database, const TableDescription& table, const SpatialReference& reference,
              const Extent& extent) {
    Statement contents(database, "INSERT INTO gpkg_contents VALUES (?, 'features', ?, ?, ?, ?, ?, ?, ?, ?)");
    bindDescription(contents, table).bind(8, std::int64_t{reference.id()});
    int column = 4;
    for (const double edge : {extent.minX, extent.minY, extent.maxX, extent.maxY})
        extent.isEmpty() ? contents.bindNull(column++) : contents.bind(column++, edge);
    contents.run();
    Statement geometry(database, "INSERT INTO gpkg_geometry_columns VALUES (?, 'geom', 'POINT', ?, 0, 0)");
    geometry.bind(0, std::string_view(table.name)).bind(1, std::int64_t{reference.id()}).run();
}

void addAttributes(Database& database, const TableDescription& table) {
    Statement contents(database,
                       "INSERT INTO gpkg_contents (table_name, identifier, description, last_change, "
                       "data_type) VALUES (?, ?, ?, ?, 'attributes')");
    bindDescription(contents, table).run();
}

}  // namespace tessel
