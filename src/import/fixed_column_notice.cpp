// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/fixed_column_notice.h"

namespace tessel {

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
    say(kind.encoding != TextEncoding::Bytes, "The text is UTF-16; it is read as what it says.");
    say(kind.headerLines == 1, "The first line is a header; it will be in the error log.");
    say(kind.headerLines > 1, "The first " + std::to_string(kind.headerLines) +
                                  " lines are a header; they will be in the error log.");
    return notice;
}

}  // namespace tessel
