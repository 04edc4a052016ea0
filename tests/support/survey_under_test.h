// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/journal.h"

namespace tessel {

/// The survey of the process to be made up or spoilt, past the journal: what only a test may do.
Survey& surveyUnderTest();

/// No survey and no act, as when the program starts.
void startAfresh();

}  // namespace tessel
