// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/generic_reader.h"
#include "support/temporary_folder.h"

namespace tessel {

inline constexpr GenericLayout kThree = kGenericLayouts[4];       // X Y Ec1
inline constexpr GenericLayout kThreeRow = kGenericLayouts[0];    // X Y Ec1 Row
inline constexpr GenericLayout kEverything = kGenericLayouts[3];  // Site X Y Ec1 Ec2 Row

/// A delimited file, X Y Ec1 unless a test says otherwise, and what an import makes of it.
class GenericFile : public FolderTest {
  protected:
    GenericFile() {
        options.path = folder / "generic.txt";
        options.errorLogPath = folder / "error_log.dat";
        options.layout = kThree;
    }

    ImportResult import(std::string_view bytes) {
        writeFile(options.path, bytes);
        return importGenericFile(options, parameters);
    }
    std::string log() const { return readFile(options.errorLogPath); }

    // The log that a file leaves.
    std::string logOf(std::string_view bytes) {
        import(bytes);
        return log();
    }

    // X, Y, EM1 of every site, for comparing.
    std::string sitesOf(std::string_view bytes) {
        const Survey survey = import(bytes).survey;
        std::string text;
        for (SiteIndex i = 0; i < survey.NumSites; ++i)
            for (const int column : {kX, kY, kEM1})
                text += std::to_string(static_cast<int>(survey.SiteData(column, i))) +
                        (column == kEM1 ? ";" : " ");
        return text;
    }

    // A file of the layout X Y Ec1 Row with these row numbers.
    ImportResult importRows(const std::vector<double>& rows) {
        options.layout = kThreeRow;
        std::string bytes;
        for (const double row : rows)
            bytes += "1,2,3," + std::to_string(row) + "\n";
        return import(bytes);
    }

    GenericOptions options;
    Survey parameters;
};

}  // namespace tessel
