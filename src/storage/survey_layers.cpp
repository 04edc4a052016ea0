// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/survey_layers.h"

#include "base/numbers.h"
#include "base/program_version.h"
#include "storage/file_texts.h"
#include "storage/work_stream.h"

#include <utility>

namespace tessel {

namespace {

constexpr const char* kColumns =
    " (fid INTEGER PRIMARY KEY NOT NULL, geom POINT, site_number DOUBLE, row INTEGER, em1 DOUBLE, "
    "em2 DOUBLE, line INTEGER";
constexpr const char* kMeaning =
    "em1, em2: readings in mS/m; row: number of the transect; line: of the sensor file, from 1";

// A site as a row of a table, to whose columns more may be bound behind these.
class SiteRow {
  public:
    static constexpr int kColumnCount = 7;

    SiteRow(Database& database, const std::string& table, const std::string& more, int srs)
        : insert_(database, "INSERT INTO " + table + " VALUES (?, ?, ?, ?, ?, ?, ?" + more + ")"),
          geometry_(srs) {}

    /// What is null is not known.
    Statement& bind(std::int64_t id, const double* x, const double* y, const double* siteNumber, double row,
                    double em1, const double* em2, std::uint32_t line) {
        insert_.bind(0, id);
        bindPosition(x, y);
        bindOrNull(2, siteNumber);
        insert_.bind(3, row).bind(4, em1);
        bindOrNull(5, em2);
        return line > 0 ? insert_.bind(6, std::int64_t{line}) : insert_.bindNull(6);
    }
    const Extent& extent() const { return extent_; }

  private:
    void bindPosition(const double* x, const double* y) {
        if (x == nullptr) return void(insert_.bindNull(1));
        extent_.add(*x, *y);
        insert_.bindBytes(1, geometry_.at(*x, *y));
    }
    void bindOrNull(int parameter, const double* value) {
        value != nullptr ? insert_.bind(parameter, *value) : insert_.bindNull(parameter);
    }

    Statement insert_;
    PointGeometry geometry_;
    Extent extent_;
};

// The first act in force since which positions are what they are now.
std::size_t firstOfThesePositions(const Journal& journal) {
    std::size_t first = journal.position();
    while (first > 0 && !journal.act(first - 1).difference.movesSites())
        --first;
    return first;
}

class RemovedSitesWriter {
  public:
    RemovedSitesWriter(Database& database, int srs, bool two)
        : row_(database, "removed_sites", ", ?, ?", srs), two_(two) {}

    /// Positions of another system than the layer's are left out.
    void write(std::int64_t number, const Act& act, bool movedSince) {
        const Difference& difference = act.difference;
        const auto x = difference.removedEntries(kX), y = difference.removedEntries(kY),
                   em1 = difference.removedEntries(kEM1), em2 = difference.removedEntries(kEM2),
                   row = difference.removedEntries(kRow), siteNumbers = difference.removedSiteNumbers();
        const auto lines = difference.removedLines();
        const std::string why = legibleText(act.words);
        for (std::size_t i = 0; i < x.size(); ++i)
            row_.bind(++written_, movedSince ? nullptr : &x[i], &y[i],
                      siteNumbers.empty() ? nullptr : &siteNumbers[i], row[i], em1[i],
                      two_ ? &em2[i] : nullptr, lines.empty() ? 0 : lines[i])
                .bind(SiteRow::kColumnCount, number)
                .bind(SiteRow::kColumnCount + 1, std::string_view(why))
                .run();
    }
    const Extent& extent() const { return row_.extent(); }

  private:
    SiteRow row_;
    bool two_;
    std::int64_t written_ = 0;
};

class FactWriter {
  public:
    explicit FactWriter(Database& database)
        : insert_(database, "INSERT INTO survey (name, value) VALUES (?, ?)") {}

    void text(const std::string& name, const std::string& value) {
        const std::string legible = legibleText(value);
        insert_.bind(0, std::string_view(name)).bind(1, std::string_view(legible)).run();
    }
    void number(const std::string& name, std::int64_t value) { text(name, std::to_string(value)); }
    void number(const std::string& name, double value) { text(name, shortestText(value)); }

  private:
    Statement insert_;
};

void writeSource(FactWriter& facts, const RecordedFile& file) {
    facts.text("source_file", file.path);
    facts.number("source_file_bytes", file.state.size);
    facts.text("source_file_modified", utcText(file.state.modified));
    facts.text("source_file_sha256", file.sha256);
    if (!file.note.empty()) facts.text("source_file_note", file.note);
}

// In the words of the processing record.
void writeParameters(FactWriter& facts, const RecordedImport& import) {
    for (const auto& [name, value] : import.parameters)
        facts.text("import: " + name, value);
}

}  // namespace

void writeSites(Database& database, const Survey& survey, const SpatialReference& reference,
                const std::string& now) {
    database.run(std::string("CREATE TABLE sites") + kColumns + ")");
    SiteRow row(database, "sites", "", reference.id());
    const SiteTable& table = survey.SiteData;
    const double *const x = table.column(kX), *const y = table.column(kY), *const em1 = table.column(kEM1),
                        *const em2 = table.column(kEM2), *const rows = table.column(kRow);
    const double* const siteNumbers = survey.SiteIDPresent ? survey.SiteID.data() : nullptr;
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        row.bind(i + 1, x + i, y + i, siteNumbers != nullptr ? siteNumbers + i : nullptr, rows[i], em1[i],
                 survey.TwoEMColumns ? em2 + i : nullptr,
                 survey.SourceLine.empty() ? 0 : survey.SourceLine[static_cast<std::size_t>(i)])
            .run();
    addLayer(database, {"sites", "Sites", kMeaning, now}, reference, row.extent());
}

void writeRemovedSites(Database& database, const Journal& journal, const SpatialReference& reference,
                       const std::string& now) {
    database.run(std::string("CREATE TABLE removed_sites") + kColumns + ", act INTEGER, reason TEXT)");
    RemovedSitesWriter writer(database, reference.id(), journal.survey().TwoEMColumns);
    const std::size_t firstHere = firstOfThesePositions(journal);
    for (std::size_t i = journal.firstSinceImport(); i < journal.position(); ++i)
        writer.write(static_cast<std::int64_t>(journal.forgotten() + i + 1), journal.act(i), i < firstHere);
    addLayer(database, {"removed_sites", "Removed sites", "As they were when the act took them out", now},
             reference, writer.extent());
}

void writeActs(Database& database, const Journal& journal, const std::string& now) {
    database.run(
        "CREATE TABLE journal (act INTEGER PRIMARY KEY NOT NULL, time TEXT, kind TEXT, what TEXT, "
        "parameters TEXT, sites INTEGER, rows INTEGER, in_force INTEGER)");
    Statement insert(database, "INSERT INTO journal VALUES (?, ?, ?, ?, ?, ?, ?, ?)");
    for (std::size_t i = 0; i < journal.size(); ++i) {
        const Act& act = journal.act(i);
        const std::string time = utcText(act.time), words = legibleText(act.words),
                          parameters = jsonObject(act.parameters);
        insert.bind(0, static_cast<std::int64_t>(journal.forgotten() + i + 1))
            .bind(1, std::string_view(time))
            .bind(2, std::string_view(wordOf(act.kind)))
            .bind(3, std::string_view(words))
            .bind(4, std::string_view(parameters))
            .bind(5, std::int64_t{act.sites})
            .bind(6, std::int64_t{act.rows})
            .bind(7, std::int64_t{i < journal.position()})
            .run();
    }
    addAttributes(database, {"journal", "Journal", "What has been done to the survey", now});
}

void writeFacts(Database& database, const Journal& journal, const SavedRecords& records,
                const SpatialReference& reference, const std::string& now) {
    database.run(
        "CREATE TABLE survey (id INTEGER PRIMARY KEY NOT NULL, name TEXT NOT NULL UNIQUE, value TEXT)");
    FactWriter facts(database);
    const Survey& survey = journal.survey();
    facts.number("format", std::int64_t{kWorkFormat});
    facts.text("program", kProgramName);
    facts.text("program_version", kProgramVersion);
    facts.text("saved", now);
    facts.number("sites", std::int64_t{survey.NumSites});
    facts.number("rows", std::int64_t{survey.NumRows});
    facts.number("epsg", std::int64_t{reference.epsg});
    const auto import = static_cast<std::size_t>(survey.importNumber);
    if (import > 0 && import <= records.imports.size()) {
        writeSource(facts, records.imports[import - 1].what.file);
        writeParameters(facts, records.imports[import - 1].what);
    }
    facts.number("distance_above_which_a_row_begins_m", survey.MinDistance);
    facts.number("distance_measure", std::int64_t{survey.DistanceMode});
    if (journal.forgotten() > 0)
        facts.number("acts_forgotten", static_cast<std::int64_t>(journal.forgotten()));
    addAttributes(database, {"survey", "Survey", "Where the survey comes from", now});
}

}  // namespace tessel
