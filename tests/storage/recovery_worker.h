// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/recovery_keeper.h"
#include "support/made_survey.h"
#include "support/random_acts.h"

namespace tessel {

/// A program that works on a survey and has what it does kept in a folder.
struct Worker {
    explicit Worker(const std::string& folder)
        : keeper(folder, [this](const std::string& problem) { told.push_back(problem); }) {
        journal.watch([this](JournalEvent event) { keeper.follow(event, journal, records); });
    }
    void work(unsigned seed, int acts) {
        std::mt19937 random(seed);
        for (int i = 0; i < acts; ++i)
            doAtRandom(journal, random);
    }
    void import(SiteIndex sites) {
        const auto own = [](SiteIndex site) { return static_cast<double>(site); };
        journal.replaceSurvey({}, surveyOfReadings(sites, own, [](SiteIndex) { return 1.0; }));
    }

    Journal journal{std::size_t{1} << 30};
    SavedRecords records;
    std::vector<std::string> told;
    RecoveryKeeper keeper;
};

}  // namespace tessel
