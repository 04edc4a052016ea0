// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/suspicious_sites.h"

#include <cstdint>
#include <vector>

namespace tessel {

/// A field made up for measuring what rules find: 40 rows of 100 m, 5 m apart, a site every metre; readings
/// that change smoothly with two steep places, and a noise of 0.5 mS/m. `faults` of about one site in a
/// hundred are of the kind that the rule is there for.
struct FaultySurvey {
    Survey survey;
    std::vector<std::uint8_t> isFault;  ///< of each site
};
FaultySurvey surveyWithFaults(SuspectRule kind, unsigned seed);
/// The same without faults.
FaultySurvey surveyWithoutFaults(unsigned seed);

/// Shares of the faults and of the other sites.
struct FaultScore {
    double found = 0;
    double wronglyFlagged = 0;
};
/// Of sites whose flag is not 0.
FaultScore scoreFlags(const FaultySurvey& made, const std::vector<std::uint8_t>& flags);

}  // namespace tessel
