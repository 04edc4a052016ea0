// SPDX-License-Identifier: GPL-3.0-or-later
// The delimited file reader and its preview. The first byte is the layout and whether decimal signs are
// commas, the second the cut-off, the others are the file.
#include "fuzz/import_checks.h"
#include "import/generic_preview.h"

#include <numeric>

namespace tessel {

namespace {

void requireRows(const ImportResult& result) {
    const Survey& survey = result.survey;
    if (survey.NumSites == 0 || result.rows != ImportedRows::kUsable) return;
    const auto first = survey.NumPoints.begin() + 1;
    require(std::accumulate(first, first + survey.NumRows, SiteIndex{0}) == survey.NumSites);
}

// Line by line, in blocks of their own, the same comes out.
void requireTheSameLineByLine(const GenericOptions& options, const Survey& parameters,
                              const ImportResult& result) {
    const ImportPlan lineByLine{.blockSize = 1, .largestForOneThread = 1 << 30, .threads = 1};
    const ImportResult other = importGenericFile(options, parameters, lineByLine);
    require(other.rejected == result.rejected && other.survey.NumSites == result.survey.NumSites);
    require(other.survey.SourceLine == result.survey.SourceLine);
    require(other.survey.SiteID == result.survey.SiteID);
    for (const int column : {kX, kY, kEM1, kEM2, kRow})
        require(std::equal(result.survey.SiteData.column(column),
                           result.survey.SiteData.column(column) + result.survey.NumSites,
                           other.survey.SiteData.column(column)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input = fuzzInput(data, size);
    const TimeBudget budget(input.size());
    FuzzBytes bytes(input);
    GenericOptions options;
    const std::size_t format = bytes.byte();
    options.layout = kGenericLayouts[format % kGenericLayouts.size()];
    options.decimalCommas = format / kGenericLayouts.size() % 2 == 1;
    options.cutoff = static_cast<double>(bytes.byte()) - 128;
    options.errorLogPath = kNoSuchFolder;
    previewGenericFile(bytes.rest(), recogniseFileKind(bytes.rest()), options.layout, options.decimalCommas);
    const MemoryFile file(bytes.rest());
    options.path = file.path();
    Survey parameters;
    parameters.chooseDistance(1);
    const ImportResult result = importGenericFile(options, parameters);
    requireSites(result, options.cutoff, input.size());
    requireRows(result);
    requireTheSameLineByLine(options, parameters, result);
    return 0;
}

}  // namespace tessel
