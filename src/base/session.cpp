// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/session.h"

namespace tessel {

Session& theSession() {
    static Session session;
    return session;
}

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
