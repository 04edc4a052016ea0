// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/survey_changes.h"

namespace tessel {

namespace {

std::uint64_t changes = 0;

}  // namespace

std::uint64_t surveyChanges() {
    return changes;
}

void noteSurveyChange() {
    ++changes;
}

}  // namespace tessel
