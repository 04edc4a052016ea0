// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/survey_under_test.h"

#include <utility>

namespace tessel {

Survey& surveyUnderTest() {
    return theJournal().survey_;
}

void startAfresh() {
    theJournal() = Journal(std::size_t{1} << 30);
}

}  // namespace tessel
