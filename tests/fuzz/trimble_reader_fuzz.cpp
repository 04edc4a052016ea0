// SPDX-License-Identifier: GPL-3.0-or-later
// The sensor file reader under random layouts, beside the rules applied literally. The first twelve bytes
// are the layout and the parameters, the others the file.
#include "base/line_reader.h"
#include "base/numbers.h"
#include "fuzz/memory_file.h"
#include "import/error_log.h"
#include "import/trimble_reader.h"
#include "rows/row_detection.h"

#include <cmath>
#include <numeric>
#include <vector>

namespace tessel {

namespace {

FieldColumns fieldOf(FuzzBytes& bytes) {
    const int start = static_cast<int>(bytes.byte() % 64);
    const int length = static_cast<int>(bytes.byte() % 32);
    return {start, start + length - 1, length};
}

TrimbleOptions optionsOf(FuzzBytes& bytes) {
    TrimbleOptions options;
    const unsigned flags = bytes.byte();
    options.SiteIDPresent = (flags & 1) != 0;
    options.TwoEMColumns = (flags & 2) != 0;
    options.NegateEM = (flags & 4) != 0;
    options.DivideEMBy10 = (flags & 8) != 0;
    options.DistanceMode = 1 + static_cast<int>((flags >> 4) % 3);
    options.MinLineLength = 1 + static_cast<int>(flags >> 6);
    options.EMCutoff = static_cast<double>(bytes.byte()) - 128;
    for (FieldColumns* field :
         {&options.SiteIDField, &options.XField, &options.YField, &options.EM1Field, &options.EM2Field})
        *field = fieldOf(bytes);
    options.MinDistance = 20;
    options.errorLogPath = kNoSuchFolder;
    return options;
}

std::optional<double> numberIn(std::string_view line, const FieldColumns& field) {
    const auto from = static_cast<std::size_t>(field.Start) - 1;
    if (field.Start < 1 || field.Len < 1 || from >= line.size()) return std::nullopt;
    return numericValue(line.substr(from, static_cast<std::size_t>(field.Len)));
}

double converted(const TrimbleOptions& options, double reading) {
    if (options.NegateEM) reading = 0.0 - reading;
    return options.DivideEMBy10 ? reading / 10 : reading;
}

bool readingIsIn(const TrimbleOptions& options, std::string_view line, const FieldColumns& field) {
    const auto reading = numberIn(line, field);
    return reading && converted(options, *reading) >= options.EMCutoff;
}

bool isSite(const TrimbleOptions& options, std::string_view line) {
    return (!options.SiteIDPresent || numberIn(line, options.SiteIDField)) &&
           (!options.TwoEMColumns || readingIsIn(options, line, options.EM2Field)) &&
           numberIn(line, options.XField) && numberIn(line, options.YField) &&
           readingIsIn(options, line, options.EM1Field);
}

// Every line that is long enough is a site or an error, and a site holds what stands in its fields.
void requireLiterally(const TrimbleOptions& options, const Survey& survey, std::int64_t errors) {
    SiteIndex sites = 0;
    std::int64_t rejected = 0;
    LineReader file(options.path);
    for (std::string_view line; file.next(line);) {
        if (line.size() <= static_cast<std::size_t>(options.MinLineLength)) continue;
        if (!isSite(options, line)) {
            ++rejected;
            continue;
        }
        require(sites < survey.NumSites);
        require(survey.SiteData(kX, sites) == *numberIn(line, options.XField));
        require(survey.SiteData(kY, sites) == *numberIn(line, options.YField));
        require(survey.SiteData(kEM1, sites) == converted(options, *numberIn(line, options.EM1Field)));
        require(survey.SourceLine.at(static_cast<std::size_t>(sites)) == file.lineNumber());
        ++sites;
    }
    require(sites == survey.NumSites && rejected == errors);
}

void requireRows(ImportResult result) {
    Survey& survey = result.survey;
    if (survey.NumSites == 0 || result.rows == ImportedRows::kTooManyRows) return;
    Calculate_NumPoints(survey);
    const auto first = survey.NumPoints.begin() + 1;
    require(survey.NumRows >= 1 && survey.NumRows <= kMaxRows);
    require(std::accumulate(first, first + survey.NumRows, SiteIndex{0}) == survey.NumSites);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input = fuzzInput(data, size);
    const TimeBudget budget(input.size());
    FuzzBytes bytes(input);
    TrimbleOptions options = optionsOf(bytes);
    const MemoryFile file(bytes.rest());
    options.path = file.path();
    Survey survey;
    ErrorLog log(options.errorLogPath);
    ImportSummary summary;
    const std::int64_t errors = readTrimbleFile(options, survey, log, summary);
    requireLiterally(options, survey, errors);
    requireRows(importTrimbleFile(options));
    return 0;
}

}  // namespace tessel
