// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/record_keeper.h"

#include "app/menu_items.h"
#include "app/site_runs.h"
#include "base/numbers.h"

#include <algorithm>
#include <filesystem>

namespace tessel {

namespace {

const char* inWords(bool yes) {
    return yes ? "true" : "false";
}

const char* measureInWords(int mode) {
    return mode == 2 ? "along X" : mode == 3 ? "along Y" : "true distance";
}

bool hasDegrees(const ImportSummary& summary) {
    return std::ranges::find(summary.fields, "longitude", &FieldPlace::name) != summary.fields.end();
}

RecordedValues parametersOf(const Survey& parameters, const ImportSummary& summary) {
    RecordedValues values = {{"smallest accepted reading (mS/m)", shortestText(summary.cutoff)}};
    if (summary.isTable) {
        values.emplace_back("decimal commas", inWords(summary.decimalCommasRead));
        if (parameters.PositionsCRS != 0)
            values.emplace_back(hasDegrees(summary) ? "degrees converted to" : "positions in",
                                "EPSG:" + std::to_string(parameters.PositionsCRS));
    } else if (!summary.fixedColumns) {
        values.emplace_back("semicolons and decimal commas", inWords(summary.decimalCommasRead));
        return values;
    }
    values.emplace_back("readings negated", inWords(parameters.NegateEM));
    values.emplace_back("readings divided by 10", inWords(parameters.DivideEMBy10));
    values.emplace_back("lines passed over up to a length of (bytes)",
                        std::to_string(parameters.MinLineLength));
    values.emplace_back("distances", measureInWords(parameters.DistanceMode));
    values.emplace_back("distance above which a row begins (m)", shortestText(parameters.MinDistance));
    return values;
}

// The error log's reasons begin with an arrow.
std::string bareReason(const std::string& reason) {
    const std::size_t begin = reason.find_first_not_of(" ->");
    return begin == std::string::npos ? reason : reason.substr(begin);
}

// Of the survey as it has just been imported.
RecordedImport recordedImport(const Survey& survey, const ImportSummary& summary) {
    RecordedImport import;
    import.file.path = std::filesystem::absolute(summary.path).lexically_normal().string();
    import.file.state = summary.file;
    import.kind = summary.fixedColumns ? "fixed columns" : summary.isTable ? "table" : "separated values";
    import.parameters = parametersOf(survey, summary);
    import.fields = summary.fields;
    import.linesRead = summary.linesRead;
    import.rejected = summary.rejected;
    for (RejectedLines& rejected : import.rejected)
        rejected.reason = bareReason(rejected.reason);
    import.sites = survey.NumSites;
    import.rows = survey.NumRows;
    return import;
}

RecordedAct recordedAct(const Act& act) {
    RecordedAct recorded{act.time, wordOf(act.kind), act.words, act.parameters, {}, act.sites, act.rows};
    const SiteIndex sites = sitesIn(act.difference.removed());
    if (sites > 0)
        recorded.removed = RecordedRemoval{sites, runsOf(act.difference.removedLines()),
                                           runsOf(act.difference.removedSiteNumbers())};
    return recorded;
}

}  // namespace

void RecordKeeper::noteImport(const Journal& journal, const ImportSummary& summary) {
    std::vector<SavedImport>& imports = records_.imports;
    imports.resize(static_cast<std::size_t>(journal.survey().importNumber));
    imports.back() = {summary, recordedImport(journal.survey(), summary), journal.actsInForce()};
    // The journal may have been too small for the act.
    imports.back().what.time =
        journal.position() > 0 ? journal.act(journal.position() - 1).time : std::chrono::system_clock::now();
}

const ImportSummary* RecordKeeper::importOf(const Survey& survey) const {
    const auto number = static_cast<std::size_t>(survey.importNumber);
    return number > 0 && number <= records_.imports.size() ? &records_.imports[number - 1].summary : nullptr;
}

void RecordKeeper::become(SavedRecords records) {
    records_ = std::move(records);
    records_.menuItems.assign(followingItems().begin(), followingItems().end());
}

SavedImport* RecordKeeper::importWithNumber(int number) {
    const auto place = static_cast<std::size_t>(number);
    return place > 0 && place <= records_.imports.size() ? &records_.imports[place - 1] : nullptr;
}

void RecordKeeper::noteExport(const Journal& journal, const RecordedExport& file) {
    records_.exports.push_back({file, journal.survey().importNumber, journal.content()});
}

void RecordKeeper::identifyFiles(std::int64_t upTo) {
    const auto identifySmall = [upTo](RecordedFile& file) {
        if (file.state.size <= upTo) identify(file);
    };
    for (SavedImport& import : records_.imports)
        identifySmall(import.what.file);
    for (SavedExport& each : records_.exports)
        identifySmall(each.what.file);
}

ProcessingRecord RecordKeeper::record(const Journal& journal) {
    ProcessingRecord record;
    record.time = std::chrono::system_clock::now();
    const int number = journal.survey().importNumber;
    const std::size_t first = journal.firstSinceImport();
    std::size_t actsBefore = 0;
    if (SavedImport* const import = importWithNumber(number)) {
        identify(import->what.file);
        record.import = import->what;
        actsBefore = import->acts;
    }
    if (journal.forgotten() + first > actsBefore)
        record.forgottenActs = static_cast<std::int64_t>(journal.forgotten() + first - actsBefore);
    for (std::size_t i = first; i < journal.position(); ++i)
        record.acts.push_back(recordedAct(journal.act(i)));
    record.sites = journal.survey().NumSites;
    record.rows = journal.survey().NumRows;
    for (SavedExport& each : records_.exports) {
        if (each.importNumber != number) continue;
        identify(each.what.file);
        record.exports.push_back(each.what);
        record.exports.back().isOfThisState = each.content == journal.content();
    }
    return record;
}

}  // namespace tessel
