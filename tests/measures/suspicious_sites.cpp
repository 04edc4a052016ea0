// SPDX-License-Identifier: GPL-3.0-or-later
// Prints the table of docs/suspicious-sites.md: what rules find of planted faults, and which good sites they
// flag.
#include "analysis/suspicious_sites.h"

#include "support/made_faults.h"

#include <cmath>
#include <cstdio>
#include <string>

namespace tessel {

namespace {

constexpr unsigned kFields = 10;  // of each kind

const char* const kKinds[] = {
    "reading below the limit", "spike along the row",   "six to twelve sites of a row off",
    "jump out and back",       "repeated position",     "lost fix at 0, 0",
    "stuck readings",          "one reading of two off"};

using Flags = std::vector<std::uint8_t>;

Flags byOurs(const Survey& survey, std::initializer_list<SuspectRule> rules) {
    SuspectParameters parameters = proposedSuspectParameters(survey);
    for (const SuspectRule rule : rules)
        parameters.uses[rule] = true;
    return findSuspects(survey, parameters).flags;
}

// Flags a value that differs from value(i) by more than three standard deviations of all differences.
template <typename Expected>
void flagBeyondThree(const Survey& survey, int column, Expected expected, Flags& flags) {
    const auto difference = [&](SiteIndex i) { return survey.SiteData(column, i) - expected(i); };
    double sum = 0;
    double squares = 0;
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        sum += difference(i);
    const double mean = sum / static_cast<double>(survey.NumSites);
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        squares += (difference(i) - mean) * (difference(i) - mean);
    const double allowed = 3 * std::sqrt(squares / static_cast<double>(survey.NumSites - 1));
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        if (std::abs(difference(i) - mean) > allowed) flags[static_cast<std::size_t>(i)] = 1;
}

Flags byMeanOfField(const Survey& survey) {
    Flags flags(static_cast<std::size_t>(survey.NumSites), 0);
    for (const int column : {kEM1, kEM2})
        flagBeyondThree(
            survey, column, [](SiteIndex) { return 0.0; }, flags);
    return flags;
}

// The mean of eleven sites with this one in the middle.
Flags byMovingAverage(const Survey& survey) {
    Flags flags(static_cast<std::size_t>(survey.NumSites), 0);
    for (const int column : {kEM1, kEM2})
        flagBeyondThree(
            survey, column,
            [&](SiteIndex i) {
                const SiteIndex first = std::max<SiteIndex>(0, i - 5);
                const SiteIndex last = std::min(survey.NumSites, i + 6);
                double sum = 0;
                for (SiteIndex j = first; j < last; ++j)
                    sum += survey.SiteData(column, j);
                return sum / static_cast<double>(last - first);
            },
            flags);
    return flags;
}

void add(FaultScore& sum, const FaultScore& score) {
    sum.found += score.found / kFields;
    sum.wronglyFlagged += score.wronglyFlagged / kFields;
}

void printScores(const char* kind, const FaultScore (&scores)[4], bool hasFaults) {
    std::printf("| %s", kind);
    for (const FaultScore& score : scores) {
        if (hasFaults)
            std::printf(" | %.1f %% | %.2f %%", 100 * score.found, 100 * score.wronglyFlagged);
        else
            std::printf(" | – | %.2f %%", 100 * score.wronglyFlagged);
    }
    std::puts(" |");
}

constexpr auto kAllRules = {kOutsideLimits, kSpike,   kUnlikeAround, kJump,
                            kRepeatedPlace, kFarAway, kStuckReading, kReadingsApart};

template <typename Make>
void printLine(const char* kind, std::initializer_list<SuspectRule> rules, bool hasFaults, Make make) {
    FaultScore scores[4];
    for (unsigned seed = 1; seed <= kFields; ++seed) {
        const FaultySurvey made = make(seed);
        add(scores[0], scoreFlags(made, byOurs(made.survey, rules)));
        add(scores[1], scoreFlags(made, byOurs(made.survey, kAllRules)));
        add(scores[2], scoreFlags(made, byMeanOfField(made.survey)));
        add(scores[3], scoreFlags(made, byMovingAverage(made.survey)));
    }
    printScores(kind, scores, hasFaults);
}

void printTable() {
    std::puts(
        "| planted | its rule: found | good flagged | all rules: found | good flagged | mean ± 3 SD: found | "
        "good "
        "flagged | moving average: found | good flagged |");
    std::puts("|---|---|---|---|---|---|---|---|---|");
    for (int kind = 0; kind < kSuspectRules; ++kind) {
        const auto rule = static_cast<SuspectRule>(kind);
        printLine(kKinds[kind], {rule}, true, [=](unsigned seed) { return surveyWithFaults(rule, seed); });
    }
    printLine("nothing", {}, false, surveyWithoutFaults);
}

}  // namespace

}  // namespace tessel

int main() {
    tessel::printTable();
}
