// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/saved_work.h"

namespace tessel {

/// What differs between two journals, to the last bit and in every act that they know, or nothing.
std::string journalDifferences(const Journal& a, const Journal& b);

/// The survey at each position of a journal from its first act to its last.
std::vector<Survey> statesOf(Journal& journal);

}  // namespace tessel
