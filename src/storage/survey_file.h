// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/input_file.h"
#include "storage/saved_work.h"

#include <optional>
#include <string>

namespace tessel {

// The survey file: a GeoPackage that other programs show as it stands, and that brings all of the work back
// bit for bit. docs/survey-file.md describes it.

/// The suffix of a survey file's name.
inline constexpr const char* kSurveyFileSuffix = "gpkg";

/// Writes the file, whole or not at all (FileReplacement). Throws RunTimeError with path and reason, also
/// while another program is in the middle of changing a file of this name, or has left it so.
void saveSurvey(const std::string& path, const Journal& journal, const SavedRecords& records);

/// Reads it. Throws RunTimeError with path and reason: the file is damaged, of another program, from a newer
/// version, or in use by a program that has not finished it. `known` is what the file was like when it was
/// read; nothing when another program has written to it since it was saved.
SavedWork openSurvey(const std::string& path, std::optional<FileState>* known = nullptr);

/// Requires that no other program is in the middle of changing the file, or has left it so. Throws
/// RunTimeError with path and what lies beside it.
void requireFinished(const std::string& path);

/// Whether the file is a GeoPackage that this program has not made. False for what is none, or not readable.
bool isForeignGeoPackage(const std::string& path);

}  // namespace tessel
