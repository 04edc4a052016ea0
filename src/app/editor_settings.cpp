#include "app/editor_settings.h"

#include "app/line_reader.h"
#include "app/numbers.h"
#include "app/run_time_error.h"

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

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
    std::vector<std::string> items;
    std::error_code error;
    if (std::filesystem::file_size(path, error) > kLargestFile || error) return items;
    LineReader reader(path);
    std::string_view line;
    while (items.size() < kItems && reader.next(line)) {
        do
            items.push_back(takeItem(line));
        while (!line.empty() && items.size() < kItems);
    }
    return items;
}

}  // namespace

void ReadTEinfo(Session& session) {
    session.TextEditor = kFallbackEditor;
    session.PrintScale = 1.0;
    try {
        const auto items = readItems(session.AppDir + "/VARN_te_fio_info.dat");
        if (items.size() < kItems) return;
        const auto factor = numericValue(items[5]);
        if (items[1].empty() || !factor || *factor <= 0) return;
        session.TextEditor = items[1] + " ";
        session.PrintScale = *factor;
    } catch (const RunTimeError&) {
        // Without settings the fallback is in force; nothing is lost that the user could miss.
    }
}
