// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/database.h"

#include "base/run_time_error.h"
#include "storage/descriptor_vfs.h"

#include <new>
#include <sqlite3.h>
#include <sys/stat.h>
#include <utility>

namespace tessel {

namespace {

// A file may have been made by anybody: what it says of itself is neither believed nor carried out.
constexpr const char* kRead =
    "PRAGMA trusted_schema = OFF; PRAGMA cell_size_check = ON; PRAGMA query_only = ON; PRAGMA mmap_size = 0";
// Nothing has to survive on the way: a file that is not whole is thrown away.
constexpr const char* kWrite =
    "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; PRAGMA locking_mode = EXCLUSIVE; "
    "PRAGMA temp_store = MEMORY; PRAGMA cache_size = -16384";

constexpr int kLongestValue = 1 << 26;
// Of SQLite's machine, while a file is read; a row takes some tens.
constexpr std::int64_t kLeastSteps = 10'000'000;
constexpr std::int64_t kStepsForAByte = 20;
constexpr int kStepsAtOnce = 100'000;

std::string reasonFor(int code, sqlite3* database) {
    if (code == SQLITE_NOTADB) return "it is no database";
    if (code == SQLITE_CORRUPT || code == SQLITE_INTERRUPT) return "it is damaged";
    return sqlite3_errmsg(database);
}

}  // namespace

void Database::Close::operator()(sqlite3* database) const {
    sqlite3_close_v2(database);
}

Database::Database(int descriptor, std::string path, Use use)
    : path_(std::move(path)), action_(use == Use::kWrite ? "cannot be written" : "cannot be opened") {
    takeFileError();
    sqlite3* opened = nullptr;
    const int flags = use == Use::kWrite ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
    const int code = sqlite3_open_v2(std::to_string(descriptor).c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX,
                                     descriptorVfs());
    database_.reset(opened);
    require(code);
    if (use == Use::kRead) {
        sqlite3_db_config(opened, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        sqlite3_limit(opened, SQLITE_LIMIT_LENGTH, kLongestValue);
        limitWork(descriptor);
    }
    run(use == Use::kWrite ? kWrite : kRead);
}

// In a file whose pages lead to one another there may be more rows than anybody can read.
void Database::limitWork(int descriptor) {
    struct stat status {};
    stepsLeft_ = kLeastSteps + (::fstat(descriptor, &status) == 0 ? kStepsForAByte * status.st_size : 0);
    const auto goOn = [](void* left) {
        return (*static_cast<std::int64_t*>(left) -= kStepsAtOnce) < 0 ? 1 : 0;
    };
    sqlite3_progress_handler(database_.get(), kStepsAtOnce, goOn, &stepsLeft_);
}

void Database::require(int code, int expected) {
    if (code == expected) return;
    if (code == SQLITE_NOMEM) throw std::bad_alloc();
    if (const int reason = takeFileError()) throw RunTimeError::file(path_, action_, reason);
    throw RunTimeError::file(path_, action_, reasonFor(code, database_.get()));
}

void Database::run(const std::string& statements) {
    require(sqlite3_exec(database_.get(), statements.c_str(), nullptr, nullptr, nullptr));
}

std::int64_t Database::number(const std::string& query) {
    Statement statement(*this, query);
    return statement.next() ? statement.number(0) : 0;
}

bool Database::hasTable(const std::string& name) {
    Statement statement(
        *this, "SELECT count(*) FROM sqlite_schema WHERE type = 'table' AND name = ? AND rootpage > 0");
    return statement.bind(0, std::string_view(name)).next() && statement.number(0) == 1;
}

void Statement::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

Statement::Statement(Database& database, const std::string& statement) : database_(database) {
    sqlite3_stmt* made = nullptr;
    const int code =
        sqlite3_prepare_v3(database.database_.get(), statement.c_str(),
                           static_cast<int>(statement.size()) + 1, SQLITE_PREPARE_PERSISTENT, &made, nullptr);
    statement_.reset(made);
    database_.require(code);
}

Statement& Statement::bind(int parameter, double value) {
    database_.require(sqlite3_bind_double(statement_.get(), parameter + 1, value));
    return *this;
}

Statement& Statement::bind(int parameter, std::int64_t value) {
    database_.require(sqlite3_bind_int64(statement_.get(), parameter + 1, value));
    return *this;
}

Statement& Statement::bind(int parameter, std::string_view text) {
    database_.require(sqlite3_bind_text64(statement_.get(), parameter + 1, text.data(), text.size(),
                                          SQLITE_STATIC, SQLITE_UTF8));
    return *this;
}

Statement& Statement::bindBytes(int parameter, std::string_view bytes) {
    database_.require(
        sqlite3_bind_blob64(statement_.get(), parameter + 1, bytes.data(), bytes.size(), SQLITE_STATIC));
    return *this;
}

Statement& Statement::bindNull(int parameter) {
    database_.require(sqlite3_bind_null(statement_.get(), parameter + 1));
    return *this;
}

void Statement::run() {
    database_.require(sqlite3_step(statement_.get()), SQLITE_DONE);
    database_.require(sqlite3_reset(statement_.get()));
}

bool Statement::next() {
    const int code = sqlite3_step(statement_.get());
    if (code == SQLITE_ROW) return true;
    database_.require(code, SQLITE_DONE);
    return false;
}

std::int64_t Statement::number(int column) const {
    return sqlite3_column_int64(statement_.get(), column);
}

double Statement::real(int column) const {
    return sqlite3_column_double(statement_.get(), column);
}

Statement::Kind Statement::kind(int column) const {
    switch (sqlite3_column_type(statement_.get(), column)) {
        case SQLITE_INTEGER:
            return Kind::kWhole;
        case SQLITE_FLOAT:
            return Kind::kReal;
        case SQLITE_TEXT:
            return Kind::kText;
        default:
            return Kind::kOther;
    }
}

std::string_view Statement::text(int column) const {
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
    return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column))};
}

std::string_view Statement::bytes(int column) const {
    const void* const bytes = sqlite3_column_blob(statement_.get(), column);
    const int size = sqlite3_column_bytes(statement_.get(), column);
    return {static_cast<const char*>(bytes), static_cast<std::size_t>(size)};
}

}  // namespace tessel
