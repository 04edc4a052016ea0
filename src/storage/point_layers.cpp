// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/point_layers.h"

#include "base/numbers.h"
#include "base/run_time_error.h"
#include "geodesy/coordinate_systems.h"
#include "import/table_shape.h"
#include "storage/byte_stream.h"
#include "storage/geopackage.h"
#include "storage/opened_file.h"
#include "storage/survey_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace tessel {

namespace {

// What the file says of a layer.
struct FoundLayer {
    std::string table, geometry, definition;
    std::int64_t srs = 0, epsg = 0;
};

std::string quotedName(std::string_view name) {
    std::string quoted = "\"";
    for (const char c : name)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

// A value must not be taken for two, or for the next line.
std::string onOneLine(std::string_view text) {
    std::string line(text);
    for (char& c : line)
        if (c == '"')
            c = '\'';
        else if (static_cast<unsigned char>(c) < ' ')
            c = ' ';
    return line;
}

std::string upperCase(std::string_view text) {
    std::string upper(text);
    std::ranges::transform(text, upper.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return upper;
}

// By the type with which a column is declared. Texts may be numbers.
bool holdsValues(const std::string& type) {
    return std::ranges::none_of(
        std::array{"BLOB", "GEOMETRY", "POINT", "LINESTRING", "CURVE", "POLYGON", "SURFACE"},
        [&](std::string_view word) { return type.find(word) != type.npos; });
}

std::vector<FoundLayer> findLayers(Database& database) {
    std::vector<FoundLayer> layers;
    if (!database.hasTable("gpkg_geometry_columns") || !database.hasTable("gpkg_spatial_ref_sys"))
        return layers;
    Statement rows(database,
                   "SELECT table_name, column_name, definition, g.srs_id, CASE upper(organization) WHEN "
                   "'EPSG' THEN organization_coordsys_id ELSE 0 END FROM gpkg_geometry_columns g LEFT JOIN "
                   "gpkg_spatial_ref_sys s ON s.srs_id = g.srs_id WHERE upper(geometry_type_name) IN "
                   "('POINT', 'MULTIPOINT', 'GEOMETRY') ORDER BY g.rowid");
    while (rows.next())
        layers.push_back({std::string(rows.text(0)), std::string(rows.text(1)), std::string(rows.text(2)),
                          rows.number(3), rows.number(4)});
    std::erase_if(layers, [&](const FoundLayer& layer) { return !database.hasTable(layer.table); });
    return layers;
}

// The columns that may hold numbers, and the one by which a point is known.
struct Columns {
    std::vector<std::string> values;
    std::string key = "rowid";
};

// No more than can be given a role. What a table calculates is no column of it here, so that nothing in a
// file is carried out.
Columns columnsOf(Database& database, const FoundLayer& layer) {
    constexpr std::size_t kMost = kPreviewColumns - 2;
    Columns columns;
    Statement rows(database, "PRAGMA table_info(" + quotedName(layer.table) + ")");
    while (rows.next()) {
        const std::string name(rows.text(1)), type = upperCase(rows.text(2));
        if (rows.number(5) == 1 && type == "INTEGER")
            columns.key = quotedName(name);
        else if (columns.values.size() < kMost && holdsValues(type) &&
                 upperCase(name) != upperCase(layer.geometry))
            columns.values.push_back(name);
    }
    return columns;
}

// Without a number in the standard they are degrees, taken for the usual ones.
HorizontalSystem systemOf(const FoundLayer& layer) {
    if (layer.srs == 0) return {SystemKind::kOther, kWgs84};
    return horizontalSystem(std::in_range<int>(layer.epsg) ? static_cast<int>(layer.epsg) : 0,
                            layer.definition);
}

// Why the positions can be neither taken as they are nor converted; empty if they can.
std::string whyNotReadable(const HorizontalSystem& system) {
    if (system.kind == SystemKind::kNone) return "its coordinate system is none of a map";
    if (system.kind == SystemKind::kOther && system.number == 0)
        return "its coordinate system is not in metres and has no EPSG number: convert it into another one "
               "first";
    return {};
}

PointLayer describe(Database& database, const FoundLayer& layer) {
    const HorizontalSystem system = systemOf(layer);
    const bool isConverted = system.kind == SystemKind::kOther;
    PointLayer described{layer.table, isConverted ? "longitude\tlatitude" : "X\tY", 0};
    for (const std::string& name : columnsOf(database, layer).values)
        described.header += '\t' + onOneLine(name);
    if (system.kind == SystemKind::kMetres) described.system = system.number;
    return described;
}

class GeoPackageLines final : public LayerLines {
  public:
    GeoPackageLines(const std::string& path, const std::string& layer)
        : file_(path),
          database_(file_.descriptor(), path, Database::Use::kRead),
          rows_(database_, query(path, layer)) {}

    bool next(std::string_view& line) override {
        if (!rows_.next()) return false;
        line_.clear();
        addPosition();
        for (int column = 2; column < columns_; ++column)
            addValue(column);
        line = line_;
        return true;
    }
    std::int64_t lineNumber() const override { return std::max<std::int64_t>(rows_.number(0), 0); }
    const FileState& fileState() const override { return file_.state(); }

  private:
    std::string query(const std::string& path, const std::string& name) {
        const auto layers = findLayers(database_);
        const auto layer = std::ranges::find(layers, name, &FoundLayer::table);
        if (layer == layers.end())
            throw RunTimeError::file(path, "cannot be read", "it has no layer " + name);
        setWay(path, *layer);
        const Columns columns = columnsOf(database_, *layer);
        std::string query = "SELECT " + columns.key + ", " + quotedName(layer->geometry);
        for (const std::string& column : columns.values)
            query += ", " + quotedName(column);
        columns_ = static_cast<int>(columns.values.size()) + 2;
        return query + " FROM " + quotedName(layer->table) + " ORDER BY 1";
    }

    void setWay(const std::string& path, const FoundLayer& layer) {
        const HorizontalSystem system = systemOf(layer);
        if (const std::string why = whyNotReadable(system); !why.empty())
            throw RunTimeError::file(path, "cannot be read", "layer " + layer.table + ": " + why);
        if (system.kind == SystemKind::kOther && system.number != kWgs84) way_.emplace(system.number);
    }

    // What cannot be converted stays as it is.
    std::optional<std::pair<double, double>> position() const {
        const auto point = pointIn(rows_.bytes(1));
        if (!point || !way_) return point;
        auto [x, y] = *point;
        way_->toDegrees(&x, &y, 1);
        return std::isfinite(x) && std::isfinite(y) ? std::pair(x, y) : point;
    }

    // Nothing between the tabs where a point has none.
    void addPosition() {
        if (const auto point = position()) {
            addNumber(point->first);
            line_ += '\t';
            addNumber(point->second);
        } else {
            line_ += '\t';
        }
    }

    void addValue(int column) {
        line_ += '\t';
        switch (rows_.kind(column)) {
            case Statement::Kind::kReal:
                return addNumber(rows_.real(column));
            case Statement::Kind::kWhole:
                return addNumber(rows_.number(column));
            case Statement::Kind::kText:
                line_ += onOneLine(rows_.text(column));
                return;
            case Statement::Kind::kOther:
                return;
        }
    }

    void addNumber(Number auto value) {
        std::array<char, 32> text;
        line_.append(text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr);
    }

    OpenedFile file_;
    Database database_;
    int columns_ = 0;
    std::optional<Transformation> way_;  // to degrees of WGS 84; none where there is nothing to convert
    Statement rows_;
    std::string line_;
};

class GeoPackageLayers final : public LayerReader {
  public:
    std::optional<std::vector<PointLayer>> layersIn(const std::string& path) const override {
        const OpenedFile file(path);
        if (!isDatabase(path)) return std::nullopt;
        requireFinished(path);
        Database database(file.descriptor(), path, Database::Use::kRead);
        std::vector<PointLayer> layers;
        for (const FoundLayer& layer : findLayers(database))
            layers.push_back(tessel::describe(database, layer));
        return layers;
    }
    std::unique_ptr<LayerLines> open(const std::string& path, const std::string& layer) const override {
        requireFinished(path);
        return std::make_unique<GeoPackageLines>(path, layer);
    }

  private:
    static bool isDatabase(const std::string& path) {
        constexpr std::string_view kSignature("SQLite format 3\0", 16);
        return readFirstBytes(path, kSignature.size()) == kSignature;
    }
};

}  // namespace

const LayerReader& geoPackageLayers() {
    static const GeoPackageLayers kLayers;
    return kLayers;
}

}  // namespace tessel
