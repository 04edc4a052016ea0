// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/import_report.h"

#include "rows/row_detection.h"

#include <array>
#include <filesystem>
#include <string>

namespace tessel {

std::string numberField(std::int64_t number) {
    const std::string text = std::to_string(number);
    return number < 0 ? text : " " + text;
}

std::string trimbleImportReport(std::int64_t valid, std::int64_t errors) {
    std::string report = "There are " + numberField(valid) + " valid records in this file.\n\n" +
                         "There are " + numberField(errors) + " records in this file\n" +
                         "containing non-numeric or invalid numeric values.";
    if (errors > 0) report += "\n\nPlease refer to the error_log.dat text file for more details.";
    return report;
}

std::string genericImportReport(std::int64_t valid, std::int64_t dropped) {
    std::string report = "There are " + std::to_string(valid) + " valid records in this file.";
    if (dropped > 0)
        report += "\n\nThere are " + std::to_string(dropped) + " records in this file\n" +
                  "containing non-numeric or invalid numeric values.\n" +
                  "Please refer to the error_log.dat text file for more details.";
    return report;
}

std::string importedRowsReport(ImportedRows rows) {
    static constexpr std::array<const char*, 5> kReports = {
        "", kTooManyRows,
        "Warning! Row count > 250.\nThis input data file may cause the VARN-Tessel program to crash.",
        "Fatal Error! Initial row # not equal to 1. Input aborted.",
        "Fatal Error! Row #'s are not sorted in sequential order. Input aborted."};
    return kReports.at(static_cast<std::size_t>(rows));
}

ActDescription describe(const ImportResult& result) {
    const std::filesystem::path path = result.summary.path;
    const std::string name = path.filename().string();
    return {ActKind::kImport,
            "import " + name,
            "Imported " + name + " with " + std::to_string(result.survey.NumSites) +
                (result.survey.NumSites == 1 ? " site" : " sites"),
            {{"file", result.summary.path}}};
}

}  // namespace tessel
