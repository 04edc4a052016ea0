// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tessel {

/// How many lines of a file the user sees, and how many bytes of a line at most.
inline constexpr std::size_t kPreviewLines = 5;
inline constexpr std::size_t kPreviewWidth = 10'000;

/// The first lines of a sensor file that are longer than `minLineLength` bytes, byte for byte. Throws
/// RunTimeError when the file cannot be read.
std::vector<std::string> previewSensorFile(const std::string& path, int minLineLength);

}  // namespace tessel
