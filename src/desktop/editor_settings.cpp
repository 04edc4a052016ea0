// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/editor_settings.h"

#include "base/line_reader.h"
#include "base/numbers.h"
#include "base/run_time_error.h"
#include "base/session.h"

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <utility>
#include <vector>

namespace tessel {

namespace {

constexpr std::size_t kItems = 6;
// Six items are never longer; a larger file is none of the suite's, and is not read.
constexpr std::uintmax_t kLargestFile = 65536;

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Takes the first item off the front of `line`: up to a comma, or between quotes.
std::string takeItem(std::string_view& line) {
    line = trimmed(line);
    if (!line.empty() && line.front() == '"') {
        const auto close = line.find('"', 1);
        const auto item = line.substr(1, close == std::string_view::npos ? close : close - 1);
        const auto comma = close == std::string_view::npos ? close : line.find(',', close);
        line = comma == std::string_view::npos ? std::string_view() : line.substr(comma + 1);
        return std::string(item);
    }
    const auto comma = line.find(',');
    const auto item = trimmed(line.substr(0, comma));
    line = comma == std::string_view::npos ? std::string_view() : line.substr(comma + 1);
    return std::string(item);
}

std::vector<std::string> readItems(const std::string& path) {
    if (std::filesystem::file_size(path) > kLargestFile)
        throw RunTimeError::file(path, "cannot be read", "it is too large for settings");
    std::vector<std::string> items;
    LineReader reader(path);
    std::string_view line;
    while (items.size() < kItems && reader.next(line)) {
        do
            items.push_back(takeItem(line));
        while (!line.empty() && items.size() < kItems);
    }
    return items;
}

std::string settingsFile(const Session& session) {
    const std::string name = "/VARN_te_fio_info.dat";
    std::error_code error;
    const std::string users = session.DataDir + name;
    return std::filesystem::exists(users, error) ? users : session.AppDir + name;
}

// The items of the file as they are taken over, and what is said of those that are not.
class Settings {
  public:
    Settings(const std::string& path, Session& session) : path_(path), session_(session) {}

    void take(const std::vector<std::string>& items) {
        takeEditor(items);
        takePrintScale(items);
    }

    std::vector<std::string> refused() { return std::move(refused_); }

  private:
    void takeEditor(const std::vector<std::string>& items) {
        if (items.size() > kEditor && !items[kEditor].empty())
            session_.TextEditor = items[kEditor] + " ";
        else
            refuse("item 2, the text editor, is missing");
    }

    void takePrintScale(const std::vector<std::string>& items) {
        if (items.size() <= kPrintScale || items[kPrintScale].empty())
            return refuse("item 6, the printer resolution factor, is missing");
        const auto factor = numericValue(items[kPrintScale]);
        if (factor && *factor >= kSmallestPrintScale && *factor <= kLargestPrintScale)
            session_.PrintScale = *factor;
        else
            refuse("item 6, \"" + items[kPrintScale] +
                   "\", is no printer resolution factor between 0.1 and 100");
    }

    void refuse(const std::string& what) { refused_.push_back(path_ + ": " + what + "."); }

    enum Item : std::size_t { kEditor = 1, kPrintScale = 5 };

    const std::string& path_;
    Session& session_;
    std::vector<std::string> refused_;
};

}  // namespace

std::vector<std::string> ReadTEinfo(Session& session) {
    session.TextEditor = kFallbackEditor;
    session.PrintScale = 1.0;
    const std::string path = settingsFile(session);
    std::error_code error;
    if (!std::filesystem::exists(std::filesystem::symlink_status(path, error))) return {};
    try {
        Settings settings(path, session);
        settings.take(readItems(path));
        return settings.refused();
    } catch (const RunTimeError& problem) {
        return {problem.description() + "."};
    } catch (const std::filesystem::filesystem_error& problem) {
        return {path + " cannot be read: " + problem.code().message() + "."};
    }
}

}  // namespace tessel
