// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/survey.h"

#include "base/fresh_memory.h"

#include <algorithm>
#include <new>

namespace tessel {

void SiteTable::resize(SiteIndex capacity) {
    // All of the room first: where there is none nothing has been resized.
    for (auto& column : columns_)
        if (index(capacity) > column.capacity())
            column.reserve(std::max(index(capacity), 2 * column.capacity()));
    for (auto& column : columns_) {
        provideMemoryFor(column, index(capacity));
        column.resize(index(capacity));
    }
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

}  // namespace tessel
