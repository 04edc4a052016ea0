// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/layer_reader.h"

namespace tessel {

std::string beginningOf(const LayerReader& reader, const std::string& path, const PointLayer& layer) {
    constexpr int kLines = 200;
    const auto lines = reader.open(path, layer.name);
    std::string text = layer.header + '\n';
    std::string_view line;
    for (int i = 0; i < kLines && lines->next(line); ++i)
        text.append(line) += '\n';
    return text;
}

}  // namespace tessel
