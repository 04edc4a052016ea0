// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/survey.h"

#include <new>

namespace tessel {

void SiteTable::resize(SiteIndex capacity) {
    for (auto& column : columns_)
        column.resize(index(capacity));
}

void SiteTable::reserve(SiteIndex capacity) {
    try {
        for (auto& column : columns_)
            column.reserve(index(capacity));
    } catch (const std::bad_alloc&) {
        // Growing step by step may still succeed.
    }
}

void SurveyParameters::chooseDistance(int mode) {
    DistanceMode = mode;
    UseTrueDist = mode == 1;
    UseXDist = mode == 2;
    UseYDist = mode == 3;
}

Survey& theSurvey() {
    static Survey survey;
    return survey;
}

}  // namespace tessel
