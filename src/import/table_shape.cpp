// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/table_shape.h"

#include "base/numbers.h"
#include "base/text_lines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace tessel {

namespace {

constexpr std::size_t kPreviewLines = 20;
constexpr std::size_t kShownWidth = 40;  // bytes of a value
constexpr int kLinesToJudge = 200;

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Takes a letter of a direction off either end; gives it in lower case, or 0.
char takeDirection(std::string_view& field) {
    constexpr std::string_view kDirections = "nesw";
    if (field.size() < 2) return 0;
    if (const char first = lowerCase(field.front()); kDirections.find(first) != kDirections.npos) {
        field = trimmed(field.substr(1));
        return first;
    }
    const char last = lowerCase(field.back());
    if (kDirections.find(last) == kDirections.npos) return 0;
    field = trimmed(field.substr(0, field.size() - 1));
    return last;
}

bool readNumber(std::string_view field, char decimalSign, double& number) {
    if (decimalSign == '.') return parseNumber(field.data(), field.data() + field.size(), number);
    // As long as numbers are, so that nothing is allocated for one.
    std::array<char, 64> text;
    if (field.size() > text.size() || field.find('.') != field.npos) return false;
    std::ranges::replace_copy(field, text.begin(), ',', '.');
    return parseNumber(text.data(), text.data() + field.size(), number);
}

struct LineOfFields {
    int fields = 0, numbers = 0;
    bool ofNumbers() const { return numbers >= 2 && numbers * 2 >= fields; }
};

LineOfFields judge(const std::vector<std::string_view>& fields, char decimalSign) {
    LineOfFields found;
    double ignored = 0;
    for (const std::string_view field : fields) {
        found.fields += !field.empty();
        found.numbers += !field.empty() && readField(field, decimalSign, true, ignored);
    }
    return found;
}

// How well a separator and a decimal sign tell the values apart, and where the first line of numbers is.
struct Reading {
    TableShape shape;
    int score = 0;
};

Reading readAs(std::string_view text, bool cutOff, char separator, char decimalSign) {
    Reading reading{{separator, decimalSign, 0, false}, 0};
    FieldSplitter splitter(separator);
    TextLines lines(text, cutOff);
    int line = 0, ofNumbers = 0;
    for (std::string_view content; ofNumbers < kLinesToJudge && lines.next(content); ++line) {
        const LineOfFields found = judge(splitter.split(content), decimalSign);
        if (!found.ofNumbers()) continue;
        if (ofNumbers++ == 0) reading.shape.linesToSkip = line;
        reading.score += found.numbers - (found.fields - found.numbers);
    }
    return reading;
}

std::string shownText(std::string_view text) {
    std::string shown(text.substr(0, kShownWidth));
    std::ranges::replace_if(
        shown, [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }, '?');
    return shown;
}

std::vector<std::string> shownTexts(const std::vector<std::string_view>& fields) {
    std::vector<std::string> texts;
    for (const std::string_view field : std::span(fields).first(std::min(fields.size(), kPreviewColumns)))
        texts.push_back(shownText(field));
    return texts;
}

bool holdsAny(const std::string& text, std::initializer_list<std::string_view> parts) {
    return std::ranges::any_of(parts, [&](std::string_view part) { return text.find(part) != text.npos; });
}

// "X", "x (m)", "X-coord", but not "xyz".
bool isNamed(const std::string& text, char letter) {
    return !text.empty() && text[0] == letter && (text.size() == 1 || !(text[1] >= 'a' && text[1] <= 'z'));
}

TableRole roleByName(std::string name) {
    std::ranges::transform(name, name.begin(), lowerCase);
    if (holdsAny(name, {"lat"})) return TableRole::kLatitude;
    if (holdsAny(name, {"lon", "lng"})) return TableRole::kLongitude;
    if (isNamed(name, 'x') || holdsAny(name, {"east"})) return TableRole::kX;
    if (isNamed(name, 'y') || holdsAny(name, {"north"})) return TableRole::kY;
    if (holdsAny(name, {"cond", "ms/m", "em1", "em2", "ec1", "ec2", "eca"}) && !holdsAny(name, {"inv"}))
        return TableRole::kEM1;
    if (holdsAny(name, {"site", "record"}) || name == "id") return TableRole::kSite;
    if (name == "row" || holdsAny(name, {"row_", "row #", "transect"})) return TableRole::kRow;
    return TableRole::kNothing;
}

bool has(const std::vector<TableRole>& roles, TableRole role) {
    return std::ranges::find(roles, role) != roles.end();
}

// As exports have columns for what was not measured: taken for it, every line would be rejected.
bool isEmpty(const TablePreview& preview, std::size_t column) {
    const auto isEmptyOn = [column](const std::vector<std::string>& line) {
        return column >= line.size() || trimmed(line[column]).empty();
    };
    return !preview.lines.empty() && std::ranges::all_of(preview.lines, isEmptyOn);
}

std::vector<TableRole> rolesByName(const TablePreview& preview) {
    std::vector<TableRole> roles(preview.columns, TableRole::kNothing);
    for (std::size_t i = 0; i < preview.header.size(); ++i) {
        TableRole role = isEmpty(preview, i) ? TableRole::kNothing : roleByName(preview.header[i]);
        if (role == TableRole::kEM1 && has(roles, role)) role = TableRole::kEM2;
        if (!has(roles, role)) roles[i] = role;
    }
    return roles;
}

bool isPosition(TableRole role) {
    return role == TableRole::kX || role == TableRole::kY || role == TableRole::kLongitude ||
           role == TableRole::kLatitude;
}

}  // namespace

std::string_view nameOf(TableRole role) {
    constexpr std::array<std::string_view, kTableRoles> kNames = {
        "nothing", "X", "Y", "longitude", "latitude", "EM1", "EM2", "site number", "row number"};
    return kNames[static_cast<std::size_t>(role)];
}

const std::vector<std::string_view>& FieldSplitter::split(std::string_view line) {
    fields_.clear();
    if (separator_ == ' ') line = trimmed(line);
    if (trimmed(line).empty()) return fields_;
    const bool endsOpen = separator_ != ' ' && line.back() == separator_;
    while (!line.empty())
        takeField(line);
    if (endsOpen) fields_.emplace_back();
    return fields_;
}

// Takes the first value off the rest of a line, with the separator behind it.
void FieldSplitter::takeField(std::string_view& rest) {
    const auto endFrom = [&](std::size_t from) {
        const std::size_t end =
            separator_ == ' ' ? rest.find_first_of(" \t", from) : rest.find(separator_, from);
        return std::min(end, rest.size());
    };
    std::size_t begin = 0;
    while (begin < rest.size() && isBlank(rest[begin]) && rest[begin] != separator_)
        ++begin;
    std::size_t quote = rest.npos;
    if (begin < rest.size() && rest[begin] == '"') quote = rest.find('"', begin + 1);
    const std::size_t end = endFrom(quote == rest.npos ? begin : quote);
    fields_.push_back(quote == rest.npos ? trimmed(rest.substr(begin, end - begin))
                                         : rest.substr(begin + 1, quote - begin - 1));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (separator_ == ' ') rest = trimmed(rest);
}

bool readField(std::string_view field, char decimalSign, bool letters, double& number) {
    const char direction = letters ? takeDirection(field) : '\0';
    double value = 0;
    if (!readNumber(field, decimalSign, value)) return false;
    number = direction == 's' || direction == 'w' ? -value : value;
    return true;
}

TableShape recogniseTable(std::string_view text, bool cutOff) {
    constexpr std::array<std::pair<char, char>, 7> kWays = {
        {{'\t', '.'}, {';', '.'}, {',', '.'}, {' ', '.'}, {'\t', ','}, {';', ','}, {' ', ','}}};
    Reading best;
    for (const auto& [separator, decimalSign] : kWays)
        if (const Reading reading = readAs(text, cutOff, separator, decimalSign); reading.score > best.score)
            best = reading;
    return best.shape;
}

TablePreview previewTable(std::string_view text, bool cutOff, const TableShape& shape) {
    TablePreview preview;
    FieldSplitter splitter(shape.separator);
    TextLines lines(text, cutOff);
    std::string_view content;
    for (int line = 1; preview.lines.size() < kPreviewLines && lines.next(content); ++line) {
        if (line < shape.linesToSkip) continue;
        std::vector<std::string> texts = shownTexts(splitter.split(content));
        if (texts.empty() && line != shape.linesToSkip) continue;
        preview.columns = std::max(preview.columns, texts.size());
        if (line == shape.linesToSkip)
            preview.header = std::move(texts);
        else
            preview.lines.push_back(std::move(texts));
    }
    return preview;
}

std::vector<TableRole> guessRoles(const TablePreview& preview) {
    std::vector<TableRole> roles = rolesByName(preview);
    if (has(roles, TableRole::kX) && has(roles, TableRole::kY))
        for (TableRole& role : roles)
            if (role == TableRole::kLongitude || role == TableRole::kLatitude) role = TableRole::kNothing;
    return roles;
}

std::vector<TableRole> guessRolesBesidePosition(const TablePreview& preview) {
    std::vector<TableRole> roles = rolesByName(preview);
    if (roles.size() < 2 || !isPosition(roles[0]) || !isPosition(roles[1])) return guessRoles(preview);
    std::replace_if(roles.begin() + 2, roles.end(), isPosition, TableRole::kNothing);
    return roles;
}

bool looksLikeMinutes(const TablePreview& preview, const TableShape& shape,
                      const std::vector<TableRole>& roles) {
    for (const std::vector<std::string>& line : preview.lines)
        for (std::size_t i = 0; i < std::min(line.size(), roles.size()); ++i) {
            const double most = roles[i] == TableRole::kLongitude  ? 180
                                : roles[i] == TableRole::kLatitude ? 90
                                                                   : HUGE_VAL;
            double number = 0;
            if (readField(line[i], shape.decimalSign, true, number) && std::abs(number) > most) return true;
        }
    return false;
}

void giveRole(std::vector<TableRole>& roles, std::size_t column, TableRole role) {
    if (role != TableRole::kNothing) std::ranges::replace(roles, role, TableRole::kNothing);
    roles[column] = role;
}

std::string whatIsMissing(const std::vector<TableRole>& roles) {
    const bool metres = has(roles, TableRole::kX) || has(roles, TableRole::kY);
    const bool degrees = has(roles, TableRole::kLongitude) || has(roles, TableRole::kLatitude);
    if (metres && degrees) return "Choose either X and Y, or longitude and latitude.";
    if (!metres && !degrees) return "Say which columns hold X and Y, or longitude and latitude.";
    for (const TableRole role : degrees ? std::array{TableRole::kLongitude, TableRole::kLatitude}
                                        : std::array{TableRole::kX, TableRole::kY})
        if (!has(roles, role)) return "Say which column holds the " + std::string(nameOf(role)) + ".";
    return has(roles, TableRole::kEM1) ? "" : "Say which column holds EM1.";
}

}  // namespace tessel
