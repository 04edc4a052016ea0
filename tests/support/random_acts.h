// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/journal.h"

namespace tessel {

/// Does something to a journal that has a survey or not: an import, any act that its survey allows, steps
/// back and forth, or what belongs to no act (counts, distances, parameters, notes). The survey can rest
/// afterwards.
void doAtRandom(Journal& journal, std::mt19937& random);

/// A journal of so many of them, from an empty one on.
Journal randomSession(unsigned seed, int acts);

}  // namespace tessel
