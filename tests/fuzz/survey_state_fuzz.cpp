// SPDX-License-Identifier: GPL-3.0-or-later
// The work on a survey as it stands in survey files and recovery files, behind their checksums.
#include "fuzz/memory_file.h"
#include "storage/work_stream.h"

namespace tessel {

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = fuzzInput(data, size);
    const TimeBudget budget(bytes.size());
    try {
        ByteReader in(bytes);
        Journal journal = readWork(in).journal;
        const std::size_t position = journal.position();
        journal.goTo(0);
        journal.goTo(journal.size());
        require(journal.survey().NumSites <= journal.survey().SiteData.capacity());
        journal.goTo(position);
    } catch (const DamagedBytes&) {
        // Said, and nothing else happened.
    }
    return 0;
}

}  // namespace tessel
