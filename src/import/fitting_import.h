// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace tessel {

/// The imports, as what a file looks like chooses among them.
enum class FittingImport {
    kGeneric,  ///< as many values on most lines as one of its layouts takes; and whatever is no text
    kTable,    ///< values between separators all the same
    kTrimble   ///< all else: columns of characters
};

/// Which import fits a file that begins with these bytes.
FittingImport fittingImport(std::string_view firstBytes);

}  // namespace tessel
