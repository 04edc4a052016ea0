// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace tessel {

/// An SQLite database in a file that is open already, and for which the caller answers (descriptor_vfs.h).
/// Every failure throws RunTimeError with the file's path and the reason.
class Database {
  public:
    enum class Use { kWrite, kRead };

    /// To write, requires an empty file; what is written is whole when all of it has been committed and the
    /// object is gone. `path` is for messages.
    Database(int descriptor, std::string path, Use use);

    /// Runs statements that give nothing, with ';' between them.
    void run(const std::string& statements);
    /// The only value of a query, 0 where it has none.
    std::int64_t number(const std::string& query);
    /// Whether there is a table of this name, and no view in its place or what a module makes.
    bool hasTable(const std::string& name);

  private:
    friend class Statement;
    struct Close {
        void operator()(sqlite3* database) const;
    };
    void require(int code, int expected = 0);
    void limitWork(int descriptor);

    std::string path_;
    const char* action_;
    std::unique_ptr<sqlite3, Close> database_;
    std::int64_t stepsLeft_ = 0;
};

/// A statement that is made ready once and run as often as wanted. Parameters and columns count from 0. The
/// database outlives it.
class Statement {
  public:
    Statement(Database& database, const std::string& statement);

    // Texts and bytes must live until the statement has run.
    Statement& bind(int parameter, double value);
    Statement& bind(int parameter, std::int64_t value);
    Statement& bind(int parameter, std::string_view text);
    Statement& bindBytes(int parameter, std::string_view bytes);
    Statement& bindNull(int parameter);

    /// Runs it, with nothing to give, and makes it ready again.
    void run();
    /// The next row; false when there is none.
    bool next();
    std::int64_t number(int column) const;
    double real(int column) const;
    enum class Kind { kWhole, kReal, kText, kOther };
    Kind kind(int column) const;
    // Valid until next().
    std::string_view text(int column) const;  ///< UTF-8, however the database keeps it
    std::string_view bytes(int column) const;

  private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };

    Database& database_;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

}  // namespace tessel
