// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/recovery_format.h"

#include "rows/row_detection.h"
#include "storage/work_check.h"
#include "storage/work_stream.h"

#include <algorithm>
#include <array>

namespace tessel::recovery_format {

namespace {

using Present = std::array<bool, 3>;

// Everything of a journal under its name.
struct Parts {
    Survey& survey;
    std::optional<SurveyParameters>& own;
    std::deque<Act>& acts;
    std::size_t& position;
    std::size_t& forgotten;
    std::uint32_t& menusBefore;
    std::uint64_t& contentBefore;
    bool& restsBefore;
    std::uint64_t& contents;
    int& imports;
    std::uint64_t& exported;

    std::uint32_t& menus() { return position == 0 ? menusBefore : acts[position - 1].menus; }
    bool& canRest() { return position == 0 ? restsBefore : acts[position - 1].canRest; }
};

template <typename Use>
void withParts(Journal& journal, Use use) {
    Journal::forEachField(journal, [&](auto&... fields) { use(Parts{fields...}); });
}

Present presentIn(const DistanceArrays& distances) {
    return {!distances.TrueDist.empty(), !distances.XDist.empty(), !distances.YDist.empty()};
}

// Distances are not written but measured again, which gives the same bits.
void measureAgain(Survey& survey, const Present& present) {
    const Present there = presentIn(survey);
    const SurveyCounts counts = survey;
    for (std::size_t i = 0; i < present.size(); ++i)
        if (present[i] && !there[i]) measureDistances(survey, static_cast<int>(i) + 1, survey, survey);
    static_cast<SurveyCounts&>(survey) = counts;
}

void readCounts(FieldReader& read, Journal& journal) {
    SurveyCounts counts;
    Present present{};
    read(counts, present[0], present[1], present[2]);
    withParts(journal, [&](Parts parts) {
        SurveyFigures figures = parts.survey;
        static_cast<SurveyCounts&>(figures) = counts;
        requireFigures(figures);
        static_cast<SurveyCounts&>(parts.survey) = counts;
        measureAgain(parts.survey, present);
    });
}

void readNotes(FieldReader& read, Journal& journal) {
    Notes notes;
    read(notes.parameters, notes.own, notes.menus, notes.canRest, notes.exported);
    requireParameters(notes.parameters);
    if (notes.own) requireParameters(*notes.own);
    withParts(journal, [&](Parts parts) {
        static_cast<SurveyParameters&>(parts.survey) = notes.parameters;
        parts.own = notes.own;
        parts.menus() = notes.menus;
        parts.canRest() = notes.canRest;
        parts.exported = notes.exported;
    });
}

void readAct(FieldReader& read, Journal& journal) {
    Act act{ActDescription()};
    read(act);
    requireFits(journal.survey(), act.difference);
    journal.doAgain(std::move(act));
}

void readMove(FieldReader& read, Journal& journal) {
    std::size_t acts = 0;
    read(acts);
    if (acts < journal.forgotten() || acts - journal.forgotten() > journal.size())
        throw DamagedBytes("an act that there is not is in force");
    journal.goTo(acts - journal.forgotten());
}

}  // namespace

std::uint64_t frameChecksum(std::uint8_t kind, std::string_view piece, bool isLast) {
    return checksumOf(piece) + kind + (isLast ? 256U : 0U);
}

std::string frameHead(std::uint8_t kind, std::string_view piece, bool isLast) {
    std::string head;
    ByteWriter out([&head](std::string_view bytes) { head = bytes; });
    FieldWriter{out}(static_cast<std::uint32_t>(piece.size()), kind, isLast,
                     frameChecksum(kind, piece, isLast));
    out.finish();
    return head;
}

void writeCounts(ByteWriter& out, const Journal& journal) {
    FieldWriter write(out);
    const Present present = presentIn(journal.survey());
    write(static_cast<const SurveyCounts&>(journal.survey()), present[0], present[1], present[2]);
}

void writeNotes(ByteWriter& out, const Journal& journal) {
    FieldWriter write(out);
    Journal::forEachField(journal, [&](const Survey& survey, auto& own, auto&, auto&, auto&, auto&, auto&,
                                       auto&, auto&, auto&, auto& exported) {
        write(static_cast<const SurveyParameters&>(survey), own, journal.menus(),
              journal.canRestAt(journal.position()), exported);
    });
}

void readRecord(std::uint8_t kind, ByteReader& in, SavedWork& work) {
    FieldReader read(in);
    switch (kind) {
        case kWork: {
            SavedWork whole = readWork(in);
            work.journal.become(std::move(whole.journal));
            work.records = std::move(whole.records);
            break;
        }
        case kAct:
            readAct(read, work.journal);
            break;
        case kMove:
            readMove(read, work.journal);
            break;
        case kCounts:
            readCounts(read, work.journal);
            break;
        case kNotes:
            readNotes(read, work.journal);
            break;
        case kRecords:
            work.records = SavedRecords();
            read(work.records);
            requireRecords(work);
            break;
        default:
            throw DamagedBytes("there is no such record");
    }
    in.finish();
}

}  // namespace tessel::recovery_format
