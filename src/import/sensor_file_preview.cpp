// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/sensor_file_preview.h"

#include "base/line_reader.h"

#include <algorithm>
#include <string_view>

namespace tessel {

std::vector<std::string> previewSensorFile(const std::string& path, int minLineLength) {
    const auto shortest = static_cast<std::size_t>(std::max(minLineLength, 0));
    LineReader file(path);
    std::vector<std::string> lines;
    for (std::string_view line; lines.size() < kPreviewLines && file.next(line);)
        if (line.size() > shortest) lines.emplace_back(line.substr(0, kPreviewWidth));
    return lines;
}

}  // namespace tessel
