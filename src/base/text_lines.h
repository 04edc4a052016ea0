// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string_view>

namespace tessel {

/// The lines of a text in memory, ended by CR LF, LF or CR as LineReader has them.
class TextLines {
  public:
    /// A last line without end is given unless the text is `cutOff` there.
    TextLines(std::string_view text, bool cutOff) : rest_(text), cutOff_(cutOff) {}

    /// Gives the next line; false when there is none.
    bool next(std::string_view& line) {
        std::size_t end = 0;
        while (end != rest_.size() && rest_[end] != '\n' && rest_[end] != '\r')
            ++end;
        if (rest_.empty() || (end == rest_.size() && cutOff_)) return false;
        line = rest_.substr(0, end);
        rest_.remove_prefix(end);
        rest_.remove_prefix(rest_.starts_with("\r\n") ? 2 : rest_.empty() ? 0 : 1);
        return true;
    }

  private:
    std::string_view rest_;
    bool cutOff_;
};

}  // namespace tessel
