// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/sensor_file_preview.h"

#include "base/line_reader.h"

#include <algorithm>
#include <string_view>

namespace tessel {

std::vector<std::string> previewSensorFile(const std::string& path, int minLineLength) {
    const auto shortest = static_cast<std::size_t>(std::max(minLineLength, 0));
    LineReader file(path);
    std::vector<std::string> lines;
    for (std::string_view line; lines.size() < kPreviewLines && file.next(line);)
        if (line.size() > shortest) lines.emplace_back(line.substr(0, kPreviewWidth));
    return lines;
}

FixedColumnNotice fixedColumnNotice(const FileKind& kind) {
    FixedColumnNotice notice;
    const auto say = [&](bool holds, const std::string& sentence) {
        if (holds) notice.text += (notice.text.empty() ? "" : "\n") + sentence;
    };
    say(!kind.isText, "This is not a text file.");
    say(kind.decimalCommas,
        "Semicolons stand between the values and commas in the numbers; the generic import fits.");
    say(kind.tabs,
        "Tabs stand between the values: columns of characters will not line up; the generic import fits.");
    notice.isWarning = !notice.text.empty();
    say(kind.encoding != TextEncoding::kBytes, "The text is UTF-16; it is read as what it says.");
    say(kind.headerLines == 1, "The first line is a header; it will be in the error log.");
    say(kind.headerLines > 1, "The first " + std::to_string(kind.headerLines) +
                                  " lines are a header; they will be in the error log.");
    return notice;
}

}  // namespace tessel
