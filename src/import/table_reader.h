// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/block_import.h"
#include "import/import_result.h"
#include "import/layer_reader.h"
#include "import/table_shape.h"

#include <map>
#include <string>
#include <vector>

namespace tessel {

class ErrorLog;

/// What the window of the table import asks for. Of the parameters those of frmDataControl count; where a
/// column holds row numbers, the minimum distance does not.
struct TableOptions : SurveyParameters {
    TableOptions() { chooseDistance(1); }

    std::string path;
    std::string layer;  ///< of a file whose layers a LayerReader reads; else empty
    std::string errorLogPath;
    TableShape shape;
    std::vector<TableRole> roles;  ///< of the columns, from the left; whatIsMissing() says nothing of them
    int system = 0;                ///< EPSG number of what degrees become; 0 for the UTM zone that fits

    bool has(TableRole role) const;
};

/// What was chosen for tables, by their headers.
using KnownTables = std::map<std::vector<std::string>, TableOptions>;

/// Reads a table into a new survey, line by line: a site for each line on which all columns that have a role
/// hold numbers, a line in the error log for any other that is not blank. A line may have fewer values than
/// the header. Degrees become metres before distances and rows are found; what cannot be converted is kept as
/// it is, and the summary tells. Throws RunTimeError, leaving the last import's error log, when the file
/// cannot be read or the coordinate system is not known. However it is read, the result is the same.
ImportResult importTable(const TableOptions& options, const ImportPlan& plan = {});
/// The same of a layer, under which its lines are counted as its own program does.
ImportResult importLayer(const TableOptions& options, const LayerReader& reader);

/// The reading alone: sites and parameters, degrees as degrees. Returns the number of rejected lines.
std::int64_t readTable(const TableOptions& options, Survey& survey, ErrorLog& log, ImportSummary& summary,
                       const ImportPlan& plan = {});

}  // namespace tessel
