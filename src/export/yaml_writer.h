// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tessel {

/// A run of whole numbers one after the other; of any other number the same one twice.
struct NumberRun {
    double first = 0;
    double last = 0;
    bool operator==(const NumberRun&) const = default;
};

/// How many bytes the character takes with which a text in UTF-8 begins; 0 for a byte that begins none.
/// Requires a text that is not empty.
std::size_t characterLength(std::string_view text);

/// Writes a YAML document, which 1.1 and 1.2 read alike: maps, lists, texts and numbers, each entry on a line
/// of its own that ends with LF.
///
/// Texts are bytes, and stand in double quotes. Where they are UTF-8 a reader gets that text; a byte that is
/// not, and a backslash, he gets in words ("\xFC"), so that nothing is lost and nothing means two things.
/// Characters that do not show are escaped.
class YamlWriter {
  public:
    /// A line that readers pass over.
    void comment(std::string_view text);

    // Entries of the map that is being written. Keys stand as they are given.

    void text(std::string_view key, std::string_view value);
    void number(std::string_view key, std::int64_t value);
    void number(std::string_view key, double value);
    /// A value as it is given: true, null, a time.
    void plain(std::string_view key, std::string_view value);
    /// Pairs [first, last], as many on a line as there is room for.
    void runs(std::string_view key, std::span<const NumberRun> runs);

    /// A map of the entries that `write` writes, at least one.
    template <typename Write>
    void map(std::string_view key, Write write) {
        begin(key) += '\n';
        ++depth_;
        write();
        --depth_;
    }

    /// A list of maps: write(item) writes the entries of one, at least one each.
    template <typename Items, typename Write>
    void list(std::string_view key, const Items& items, Write write) {
        if (items.empty()) return plain(key, "[]");
        begin(key) += '\n';
        depth_ += 2;
        for (const auto& item : items) {
            firstOfItem_ = true;
            write(item);
        }
        depth_ -= 2;
    }

    /// A text as it stands for a value, and for a key that is not plain.
    static std::string quoted(std::string_view text);

    const std::string& document() const { return text_; }

  private:
    std::string& begin(std::string_view key);

    std::string text_;
    std::size_t depth_ = 0;
    bool firstOfItem_ = false;
};

}  // namespace tessel
