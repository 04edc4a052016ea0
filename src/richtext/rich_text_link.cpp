// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/rich_text_link.h"

#include <algorithm>

namespace tessel {

namespace {

constexpr std::string_view kBlanks = " \t";

// Takes the next word, or what stands between quotes, off the front; empty at the end.
std::string_view takeArgument(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    const bool quoted = !text.empty() && text.front() == '"';
    if (quoted) text.remove_prefix(1);
    const auto length = std::min(quoted ? text.find('"') : text.find_first_of(kBlanks), text.size());
    const auto argument = text.substr(0, length);
    text.remove_prefix(std::min(length + (quoted ? 1 : 0), text.size()));
    return argument;
}

}  // namespace

std::string linkAddress(std::string_view instruction) {
    if (takeArgument(instruction) != "HYPERLINK") return {};
    std::string address;
    std::string place;
    while (!instruction.empty()) {
        const auto argument = takeArgument(instruction);
        if (argument == "\\l")
            place = std::string(1, '#').append(takeArgument(instruction));
        else if (argument == "\\o" || argument == "\\t")
            takeArgument(instruction);  // a hint and a window, which are not followed
        else if (address.empty() && argument.substr(0, 1) != "\\")
            address = argument;
    }
    return address + place;
}

}  // namespace tessel
