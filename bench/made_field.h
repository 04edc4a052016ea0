// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "import/generic_reader.h"
#include "import/table_reader.h"
#include "import/trimble_reader.h"

#include <string>

namespace tessel {

// A field made up for the benchmarks: 250 parallel rows 10 m apart, driven to and fro with a site every half
// metre, coordinates and readings with two decimals. The same size is always the same field.

inline constexpr int kFieldRows = 250;
inline constexpr double kFieldRowGap = 5;  ///< metres; between the sites' distance and the rows'

/// The survey of a field with rows and distances, as after an import.
Survey madeField(SiteIndex sites);

/// The folder of the benchmarks' files: $TESSEL_BENCH_DIR, else one in the system's temporary folder.
std::string benchFolder();

/// A fixed-column sensor file (52 bytes and a line feed) of five fields, one line in 200 without a number for
/// X; written once. Gives its path.
std::string trimbleFile(SiteIndex lines);
/// How that file is to be read.
TrimbleOptions trimbleFileOptions(SiteIndex lines);

/// A comma-separated file of X, Y, two readings and row number; written once. Gives its path.
std::string genericFile(SiteIndex records);
GenericOptions genericFileOptions(SiteIndex records);
/// The same file as a table whose columns were chosen.
TableOptions tableFileOptions(SiteIndex records);

}  // namespace tessel
