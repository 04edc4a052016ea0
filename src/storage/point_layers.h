// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/layer_reader.h"

namespace tessel {

/// Reads the layers of points of a GeoPackage, whoever has made it.
const LayerReader& geoPackageLayers();

}  // namespace tessel
