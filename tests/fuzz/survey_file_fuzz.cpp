// SPDX-License-Identifier: GPL-3.0-or-later
// A survey file as anybody may have made it.
#include "base/run_time_error.h"
#include "fuzz/memory_file.h"
#include "storage/survey_file.h"

namespace tessel {

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = fuzzInput(data, size);
    const TimeBudget budget(bytes.size());
    const MemoryFile file(bytes);
    isForeignGeoPackage(file.path());
    try {
        const SavedWork work = openSurvey(file.path());
        require(work.journal.survey().NumSites <= work.journal.survey().SiteData.capacity());
    } catch (const RunTimeError&) {
        // Said, and nothing else happened.
    }
    return 0;
}

}  // namespace tessel
