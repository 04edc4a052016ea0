// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/file_texts.h"

#include "base/numbers.h"
#include "export/yaml_writer.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>

namespace tessel {

namespace {

std::string hex(const char* before, char byte) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    return std::string(before) + kDigits[value >> 4] + kDigits[value & 15];
}

std::string jsonText(std::string_view bytes) {
    std::string json = "\"";
    for (const char c : legibleText(bytes)) {
        if (static_cast<unsigned char>(c) < 0x20)
            json += hex("\\u00", c);
        else if (c == '"' || c == '\\')
            json += {'\\', c};
        else
            json += c;
    }
    return json + '"';
}

std::string jsonValue(const std::string& value) {
    if (value == "true" || value == "false") return value;
    const auto number = numericValue(value);
    return number ? shortestText(*number) : jsonText(value);
}

}  // namespace

std::string legibleText(std::string_view bytes) {
    std::string text;
    while (!bytes.empty()) {
        const std::size_t length = bytes.front() == '\\' ? 0 : characterLength(bytes);
        text += length > 0 ? std::string(bytes.substr(0, length)) : hex("\\x", bytes.front());
        bytes.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return text;
}

std::string jsonObject(const std::vector<std::pair<std::string, std::string>>& values) {
    std::string json = "{";
    for (const auto& [name, value] : values)
        json += (json.size() > 1 ? ", " : "") + jsonText(name) + ": " + jsonValue(value);
    return json + "}";
}

std::string utcText(std::chrono::system_clock::time_point time) {
    using namespace std::chrono;
    const auto second = floor<seconds>(time);
    const std::time_t since = system_clock::to_time_t(second);
    std::tm utc{};
    ::gmtime_r(&since, &utc);
    std::array<char, 32> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &utc);
    const auto part = static_cast<long>(duration_cast<milliseconds>(time - second).count());
    std::snprintf(text.data() + length, text.size() - length, ".%03ldZ", part);
    return text.data();
}

}  // namespace tessel
