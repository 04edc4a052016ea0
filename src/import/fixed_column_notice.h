// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/file_kind.h"

#include <string>

namespace tessel {

/// What a user should know of a file's kind who is about to read it by columns of characters.
struct FixedColumnNotice {
    std::string text;        ///< a sentence a line; empty for an ordinary file
    bool isWarning = false;  ///< the file does not fit this import as it is
};

FixedColumnNotice fixedColumnNotice(const FileKind& kind);

}  // namespace tessel
