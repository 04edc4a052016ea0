// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/input_file.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

// Layers of points in files of other programs, read like a table: a line for each point, tabs between its
// values, of which the first two are its position and the others its columns, 200 in all at most. Positions
// are metres, or degrees of WGS 84: what is in other degrees, or in feet, becomes these.

/// A layer that can be read.
struct PointLayer {
    std::string name;
    std::string header;  ///< the names of the values, with tabs between them
    int system = 0;      ///< EPSG number of the coordinate system in which positions are metres; 0 for none
};

/// The lines of a layer.
class LayerLines {
  public:
    LayerLines() = default;
    virtual ~LayerLines() = default;
    LayerLines(const LayerLines&) = delete;
    LayerLines& operator=(const LayerLines&) = delete;

    /// Gives the next line; false behind the last. The view holds until the next call. Throws RunTimeError
    /// when the file cannot be read on.
    virtual bool next(std::string_view& line) = 0;
    /// The number by which its own program knows the point that next() gave last.
    virtual std::int64_t lineNumber() const = 0;
    /// What the file was like when it was opened.
    virtual const FileState& fileState() const = 0;
    std::int64_t fileSize() const { return fileState().size; }
};

/// Whoever can read such files.
class LayerReader {
  public:
    virtual ~LayerReader() = default;

    /// The layers of points in a file; nothing of a file that is of no such kind. Throws RunTimeError when
    /// the file cannot be read.
    virtual std::optional<std::vector<PointLayer>> layersIn(const std::string& path) const = 0;
    virtual std::unique_ptr<LayerLines> open(const std::string& path, const std::string& layer) const = 0;
};

/// The beginning of a layer as a text, with its header as the first line.
std::string beginningOf(const LayerReader& reader, const std::string& path, const PointLayer& layer);

}  // namespace tessel
