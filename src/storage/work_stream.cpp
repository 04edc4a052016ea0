// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/work_stream.h"

#include "base/program_version.h"
#include "storage/field_stream.h"
#include "storage/work_check.h"

namespace tessel {

void writeWork(ByteWriter& out, const Journal& journal, const SavedRecords& records) {
    FieldWriter write(out);
    write(kWorkFormat, std::string(kProgramVersion), journal, records);
}

void writeWaitingAct(ByteWriter& out, const Act& act, const Survey& after) {
    FieldWriter write(out);
    visitDescription(act, write);
    bool replaces = false;
    Difference::forEachField(act.difference, [&](auto&, auto&, auto&, auto&, auto&, auto&, auto&, auto&,
                                                 const auto& survey) { replaces = survey != nullptr; });
    const Difference waiting = act.difference.waiting(after);
    Difference::forEachField(waiting, [&](auto& figures, auto& capacity, auto& runs, auto& taken, auto& lines,
                                          auto& whole, auto& entries, auto& rows, auto&) {
        write(figures, capacity, runs, taken, lines, whole, entries, rows);
    });
    write(replaces);
    if (replaces) write(after);
}

SavedWork readWork(ByteReader& in) {
    FieldReader read(in);
    const SiteIndex mostSites = mostSitesIn(in.remaining());
    std::uint32_t format = 0;
    std::string version;
    read(format, version);
    if (format > kWorkFormat)
        throw DamagedBytes("it is from a newer version of this program (" + version + ")");
    if (format != kWorkFormat) throw DamagedBytes("it does not begin as it should");
    SavedWork work;
    read(work.journal, work.records);
    in.finish();
    requireWhole(work, mostSites);
    return work;
}

}  // namespace tessel
