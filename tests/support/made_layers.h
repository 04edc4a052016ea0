// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace tessel {

/// Makes a GeoPackage as another program does: the tables of the standard, the system of this number if there
/// is one, and what these statements add.
void makeGeoPackage(const std::string& path, const std::string& statements, int system = 0);

/// Does something to a database as another program does.
void changeDatabase(const std::string& path, const std::string& statements);

/// Statements for a layer: a table with these columns behind its number and its geometry ("em REAL, note
/// TEXT"), and what tells of it.
std::string layerOf(const std::string& name, const std::string& columns, int system = 0,
                    const std::string& type = "POINT");

/// A statement for a feature: its geometry (pointAt) and the values of its columns.
std::string featureIn(const std::string& layer, const std::string& geometry, const std::string& values);

/// A point as a blob of SQL.
std::string pointAt(double x, double y);

/// Bytes as a blob of SQL.
std::string blobOf(const std::string& bytes);

}  // namespace tessel
