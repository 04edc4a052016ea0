// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/file_kind.h"

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

/// What a user should know of a file's kind who is about to read it by columns of characters.
struct FixedColumnNotice {
    std::string text;        ///< a sentence a line; empty for an ordinary file
    bool isWarning = false;  ///< the file does not fit this import as it is
};

/// The notice for a file of this kind.
FixedColumnNotice fixedColumnNotice(const FileKind& kind);

}  // namespace tessel
