// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/table_reader.h"
#include "storage/point_layers.h"
#include "support/made_layers.h"
#include "support/temporary_folder.h"

namespace tessel {

/// A GeoPackage with a layer of points, and what is read of it.
class LayerTest : public testing::Test {
  protected:
    explicit LayerTest(std::string layer) : layer_(std::move(layer)) {}

    std::vector<PointLayer> layers() const {
        return geoPackageLayers().layersIn(path).value_or(std::vector<PointLayer>());
    }
    /// Each line behind its number.
    std::vector<std::string> lines() const { return lines(layer_); }
    std::vector<std::string> lines(const std::string& layer) const {
        const auto read = geoPackageLayers().open(path, layer);
        std::vector<std::string> lines;
        for (std::string_view line; read->next(line);)
            lines.push_back(std::to_string(read->lineNumber()) + ": " + std::string(line));
        return lines;
    }
    ImportResult import(const std::vector<TableRole>& roles) const {
        TableOptions options;
        options.path = path;
        options.layer = layer_;
        options.shape = {'\t', '.', 1, false};
        options.errorLogPath = folder / "error_log.dat";
        options.roles = roles;
        options.EMCutoff = -10;
        options.MinDistance = 5;
        return importLayer(options, geoPackageLayers());
    }

    const TemporaryFolder folder;
    const std::string path = folder / "field.gpkg";

  private:
    std::string layer_;
};

}  // namespace tessel
