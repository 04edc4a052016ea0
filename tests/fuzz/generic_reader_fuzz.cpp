// SPDX-License-Identifier: GPL-3.0-or-later
// The delimited file reader and its preview. The first byte is the layout and whether decimal signs are
// commas, the second the cut-off, the others are the file.
#include "fuzz/memory_file.h"
#include "import/generic_preview.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tessel {

namespace {

void requireSites(const GenericOptions& options, const ImportResult& result, std::size_t bytes) {
    const Survey& survey = result.survey;
    require(survey.NumSites >= 0 && result.rejected >= 0);
    require(static_cast<std::size_t>(survey.NumSites + result.rejected) <= bytes);
    require(survey.SiteData.capacity() == survey.NumSites);
    require(survey.SourceLine.size() == static_cast<std::size_t>(survey.NumSites));
    require(std::is_sorted(survey.SourceLine.begin(), survey.SourceLine.end()));
    for (SiteIndex site = 0; site < survey.NumSites; ++site) {
        require(std::isfinite(survey.SiteData(kX, site)) && std::isfinite(survey.SiteData(kY, site)));
        require(survey.SiteData(kEM1, site) >= options.cutoff);
        require(!survey.TwoEMColumns || survey.SiteData(kEM2, site) >= options.cutoff);
    }
}

void requireRows(const ImportResult& result) {
    const Survey& survey = result.survey;
    if (survey.NumSites == 0 || result.rows != ImportedRows::kUsable) return;
    const auto first = survey.NumPoints.begin() + 1;
    require(std::accumulate(first, first + survey.NumRows, SiteIndex{0}) == survey.NumSites);
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
    requireSites(options, result, input.size());
    requireRows(result);
    return 0;
}

}  // namespace tessel
