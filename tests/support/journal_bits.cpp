// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/journal_bits.h"

#include "support/survey_bits.h"

namespace tessel {

namespace {

auto descriptionOf(const Act& act) {
    return std::tie(act.kind, act.order, act.words, act.parameters, act.time, act.sites, act.rows,
                    act.canRest, act.menus, act.content);
}

}  // namespace

std::string journalDifferences(const Journal& a, const Journal& b) {
    std::string found = differences(a.survey(), b.survey());
    if (a.size() != b.size() || a.position() != b.position() || a.forgotten() != b.forgotten())
        return found + "acts known, in force or forgotten; ";
    for (std::size_t i = 0; i < a.size(); ++i)
        if (descriptionOf(a.act(i)) != descriptionOf(b.act(i))) found += "act " + std::to_string(i) + "; ";
    if (a.menus() != b.menus() || a.content() != b.content() || a.isExported() != b.isExported())
        found += "menus, content or what is exported; ";
    return found;
}

std::vector<Survey> statesOf(Journal& journal) {
    const std::size_t position = journal.position();
    std::vector<Survey> states;
    for (std::size_t i = 0; i <= journal.size(); ++i) {
        journal.goTo(i);
        states.push_back(journal.survey());
    }
    journal.goTo(position);
    return states;
}

}  // namespace tessel
