// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/line_reader.h"

namespace tessel {

bool LineReader::next(std::string_view& line) {
    while (!lines_.next(line)) {
        if (!blocks_.next(block_)) return false;
        lines_ = TextLines(block_.text());
    }
    ++lineNumber_;
    return true;
}

}  // namespace tessel
