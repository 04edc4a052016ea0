// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "import/block_import.h"
#include "import/import_result.h"

#include <cstdint>
#include <string>

namespace tessel {

class ErrorLog;

/// What the windows of the Trimble/EM-38 import ask for, handed from one to the next. The reader goes by this
/// alone; that the first window puts its parameters into the survey in memory as well, even those that it
/// refuses, is no concern of it. True distance is measured unless another distance is chosen.
struct TrimbleOptions : SurveyParameters {
    TrimbleOptions() { DistanceMode = 1; }

    std::string path;          ///< the sensor file
    std::string errorLogPath;  ///< where rejected lines go
    bool SiteIDPresent = false;
    bool TwoEMColumns = false;
};

/// Reads a fixed-column sensor file into a new survey, rejecting line by line what cannot be used into the
/// error log, and finds distances and rows. Throws RunTimeError, leaving the last import's error log, when
/// the file cannot be read. However it is read, the result is the same.
ImportResult importTrimbleFile(const TrimbleOptions& options, const ImportPlan& plan = {});

/// The reading alone: sites and parameters, NumRows 0. What the file itself is like goes into the summary.
/// Returns the number of rejected lines.
std::int64_t readTrimbleFile(const TrimbleOptions& options, Survey& survey, ErrorLog& log,
                             ImportSummary& summary, const ImportPlan& plan = {});

}  // namespace tessel
