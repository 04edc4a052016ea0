// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/made_layers.h"

#include "geodesy/coordinate_systems.h"
#include "storage/geopackage.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace tessel {

void makeGeoPackage(const std::string& path, const std::string& statements, int system) {
    ::unlink(path.c_str());
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    {
        Database database(file, path, Database::Use::kWrite);
        const SystemDefinition definition =
            system == 0 ? SystemDefinition{"none", "undefined"} : definitionOf(system);
        beginGeoPackage(database, {system, definition.name, definition.text});
        database.run(statements);
    }
    ::close(file);
}

void changeDatabase(const std::string& path, const std::string& statements) {
    const int file = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    Database(file, path, Database::Use::kWrite).run(statements);
    ::close(file);
}

std::string layerOf(const std::string& name, const std::string& columns, int system,
                    const std::string& type) {
    const std::string id = std::to_string(system == 0 ? -1 : system);
    return "CREATE TABLE \"" + name + "\" (fid INTEGER PRIMARY KEY, geom BLOB" +
           (columns.empty() ? "" : ", " + columns) + ");" +
           "INSERT INTO gpkg_contents (table_name, data_type, srs_id) VALUES ('" + name + "', 'features', " +
           id + "); INSERT INTO gpkg_geometry_columns VALUES ('" + name + "', 'geom', '" + type + "', " + id +
           ", 0, 0);";
}

std::string featureIn(const std::string& layer, const std::string& geometry, const std::string& values) {
    return "INSERT INTO \"" + layer + "\" VALUES (NULL, " + geometry + (values.empty() ? "" : ", " + values) +
           ");";
}

std::string pointAt(double x, double y) {
    return blobOf(std::string(PointGeometry(-1).at(x, y)));
}

std::string blobOf(const std::string& bytes) {
    std::string text = "x'";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02X", byte);
        text += digits;
    }
    return text + "'";
}

}  // namespace tessel
