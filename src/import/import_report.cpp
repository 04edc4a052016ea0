// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/import_report.h"

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

}  // namespace tessel
