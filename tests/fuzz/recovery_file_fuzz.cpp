// SPDX-License-Identifier: GPL-3.0-or-later
// Records of a recovery file, one behind the other: a byte for the kind, two for the size, and the bytes.
#include "fuzz/memory_file.h"
#include "storage/recovery_format.h"

namespace tessel {

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input = fuzzInput(data, size);
    const TimeBudget budget(input.size());
    FuzzBytes bytes(input);
    SavedWork work;
    try {
        while (!bytes.rest().empty()) {
            const auto kind = static_cast<std::uint8_t>(bytes.byte());
            const std::size_t low = bytes.byte(), length = low + 256 * bytes.byte();
            const std::string_view record = bytes.rest().substr(0, length);
            ByteReader in(record);
            recovery_format::readRecord(kind, in, work);
            bytes = FuzzBytes(bytes.rest().substr(record.size()));
        }
    } catch (const DamagedBytes&) {
        // What is whole in front of it counts.
    }
    work.journal.goTo(0);
    work.journal.goTo(work.journal.size());
    require(work.journal.survey().NumSites <= work.journal.survey().SiteData.capacity());
    return 0;
}

}  // namespace tessel
