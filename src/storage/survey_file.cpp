// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/survey_file.h"

#include "base/file_replacement.h"
#include "base/run_time_error.h"
#include "geodesy/coordinate_systems.h"
#include "storage/file_texts.h"
#include "storage/opened_file.h"
#include "storage/survey_layers.h"
#include "storage/work_stream.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace tessel {

namespace {

constexpr const char* kCannotBeOpened = "cannot be opened as a survey";
constexpr const char* kCannotBeWritten = "cannot be written";

// All of the work, in pieces, each with its checksum.
void writeState(Database& database, const Journal& journal, const SavedRecords& records,
                const std::string& now) {
    database.run(
        "CREATE TABLE survey_state (part INTEGER PRIMARY KEY NOT NULL, checksum INTEGER NOT NULL, "
        "bytes BLOB NOT NULL)");
    Statement insert(database, "INSERT INTO survey_state VALUES (?, ?, ?)");
    std::int64_t parts = 0;
    ByteWriter out([&](std::string_view piece) {
        insert.bind(0, ++parts)
            .bind(1, static_cast<std::int64_t>(checksumOf(piece)))
            .bindBytes(2, piece)
            .run();
    });
    writeWork(out, journal, records);
    out.finish();
    addAttributes(database, {"survey_state", "State", "All of the work, for the program that saved it", now});
}

SpatialReference referenceOf(int system) {
    if (system == 0) return {};
    const SystemDefinition definition = definitionOf(system);
    return {system, definition.name, definition.text};
}

void writeDatabase(int file, const std::string& path, const Journal& journal, const SavedRecords& records) {
    Database database(file, path, Database::Use::kWrite);
    const std::string now = utcText(std::chrono::system_clock::now());
    const SpatialReference reference = referenceOf(journal.survey().PositionsCRS);
    database.run("BEGIN");
    beginGeoPackage(database, reference);
    writeSites(database, journal.survey(), reference, now);
    writeRemovedSites(database, journal, reference, now);
    writeActs(database, journal, now);
    writeFacts(database, journal, records, reference, now);
    writeState(database, journal, records, now);
    database.run("COMMIT");
}

// What stands beside a database belongs to it: the file alone may be half changed, and would be again,
// whatever took its place. It lies where the file itself lies, whatever links lead there.
void requireNothingBeside(const std::string& path, const char* what) {
    std::error_code error;
    const std::string real = std::filesystem::canonical(path, error).string();
    for (const char* const suffix : {"-wal", "-journal"}) {
        const std::string beside = (error ? path : real) + suffix;
        std::error_code none;
        const auto size = std::filesystem::file_size(beside, none);
        if (!none && size > 0)
            throw RunTimeError::file(
                path, what,
                "another program has it open, or has not finished it (" + beside + "); close it there first");
    }
}

// Where an SQLite database counts the times that it was changed.
constexpr std::size_t kChangeCounter = 24;

// What is saved here has been written at once; whoever writes to it later counts one more.
bool isAsSaved(int file) {
    std::array<unsigned char, 4> counter{};
    return ::pread(file, counter.data(), counter.size(), kChangeCounter) == ssize_t{counter.size()} &&
           counter == std::array<unsigned char, 4>{0, 0, 0, 1};
}

[[noreturn]] void refuse(const std::string& path, const std::string& why) {
    throw RunTimeError::file(path, kCannotBeOpened, why);
}

// The parts in their order, each looked at before it is handed on.
class StateParts {
  public:
    explicit StateParts(Database& database)
        : rows_(database, "SELECT part, checksum, bytes FROM survey_state ORDER BY part") {}

    std::string_view next() {
        if (!rows_.next()) return {};
        const std::string_view bytes = rows_.bytes(2);
        if (rows_.number(0) != ++part_ || static_cast<std::uint64_t>(rows_.number(1)) != checksumOf(bytes))
            throw DamagedBytes("part " + std::to_string(part_) + " of it is damaged");
        return bytes;
    }

  private:
    Statement rows_;
    std::int64_t part_ = 0;
};

// Values that are made when they are asked for may be larger than the file, and as many as somebody likes.
bool makesValues(Database& database) {
    return database.number(
               "SELECT count(*) FROM (SELECT * FROM pragma_table_xinfo('survey') "
               "UNION ALL SELECT * FROM pragma_table_xinfo('survey_state')) WHERE hidden <> 0") > 0;
}

bool isOurs(Database& database) {
    return database.hasTable("survey") && database.hasTable("survey_state");
}

bool isGeoPackage(Database& database) {
    return database.number("PRAGMA application_id") == kGeoPackageId || database.hasTable("gpkg_contents");
}

// What the file says of its format is read before its state, which a newer version may keep elsewhere.
void requireOurs(Database& database, const std::string& path) {
    if (!isGeoPackage(database)) refuse(path, "it is no GeoPackage");
    if (!isOurs(database)) refuse(path, "it is a GeoPackage of another program");
    if (makesValues(database)) refuse(path, "it is damaged");
    if (database.number("SELECT CAST(value AS INTEGER) FROM survey WHERE name = 'format'") > kWorkFormat)
        refuse(path, "it is from a newer version of this program");
}

}  // namespace

void saveSurvey(const std::string& path, const Journal& journal, const SavedRecords& records) {
    requireNothingBeside(path, kCannotBeWritten);
    FileReplacement file(path);
    writeDatabase(file.descriptor(), path, journal, records);
    requireNothingBeside(path, kCannotBeWritten);
    file.commit();
}

void requireFinished(const std::string& path) {
    requireNothingBeside(path, kCannotBeOpened);
}

SavedWork openSurvey(const std::string& path, std::optional<FileState>* known) {
    const OpenedFile file(path);
    if (known != nullptr) *known = isAsSaved(file.descriptor()) ? std::optional(file.state()) : std::nullopt;
    requireFinished(path);
    try {
        Database database(file.descriptor(), path, Database::Use::kRead);
        requireOurs(database, path);
        const std::int64_t size = database.number("SELECT sum(length(bytes)) FROM survey_state");
        if (size < 0 || size > file.state().size) throw DamagedBytes("it is damaged");
        StateParts parts(database);
        ByteReader in(static_cast<std::uint64_t>(size), [&parts] { return parts.next(); });
        return readWork(in);
    } catch (const DamagedBytes& damage) {
        refuse(path, damage.what());
    }
}

bool isForeignGeoPackage(const std::string& path) {
    try {
        const OpenedFile file(path);
        Database database(file.descriptor(), path, Database::Use::kRead);
        return isGeoPackage(database) && !isOurs(database);
    } catch (const RunTimeError&) {
        return false;
    }
}

}  // namespace tessel
