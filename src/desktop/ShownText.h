// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <string>

namespace tessel {

/// Bytes of a file or a path as text on the screen: UTF-8 where they are that, else each byte a character. A
/// tab is a blank, a line feed stays; in the place of other control characters, and of those that would turn
/// or break a line, stands the replacement character.
QString shownText(const std::string& bytes);

}  // namespace tessel
