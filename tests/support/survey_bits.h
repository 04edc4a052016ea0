// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

namespace tessel {

/// What of two surveys is not the same bit for bit, storage behind the last site included, by name ("X",
/// "TrueDist", ...); nothing where they are the same.
std::string differences(const Survey& a, const Survey& b);

}  // namespace tessel
