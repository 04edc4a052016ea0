// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessel {

// Texts as other programs read them.

/// The text where it is UTF-8; of a byte that is not the words "\xFC", and of a backslash "\x5C".
std::string legibleText(std::string_view bytes);

/// Names and values as a JSON object: what is a number, or true or false, is that, all else a text.
std::string jsonObject(const std::vector<std::pair<std::string, std::string>>& values);

/// 2026-11-21T15:04:05.123Z
std::string utcText(std::chrono::system_clock::time_point time);

}  // namespace tessel
