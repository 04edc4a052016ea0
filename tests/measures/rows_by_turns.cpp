// SPDX-License-Identifier: GPL-3.0-or-later
// Prints the table of docs/rows-by-turns.md: how well rows are found on fields whose rows are known.
#include "rows/row_turns.h"
#include "support/made_walks.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace tessel {

namespace {

constexpr unsigned kFields = 6;  // of each plan
constexpr double kNoGap = 30;    // metres: longer than every step where the logger never stopped

const char* const kKinds[] = {"to and fro", "spiral", "loops", "contour", "two blocks"};

std::vector<int> rowsByGaps(const Survey& survey, double distance) {
    std::vector<int> rows;
    int row = 1;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        rows.push_back(row);
        if (i > 0 && survey.TrueDist[static_cast<std::size_t>(i) + 1] > distance) ++row;
    }
    return rows;
}

struct GapOutcome {
    RowScore score;
    double distance = 0;
};

// By the minimum distance that, of all, puts most sites into the right row: one that a user hardly finds.
GapOutcome bestByGaps(const MadeWalk& walk) {
    GapOutcome best;
    for (double distance = 0.5; distance < 60; distance *= 1.15) {
        const std::vector<int> rows = rowsByGaps(walk.survey, distance);
        if (rows.back() > kMaxRows) continue;
        const RowScore score = scoreRows(walk, rows);
        if (score.right > best.score.right) best = {score, distance};
    }
    return best;
}

// Shares summed over the fields, and the fewest and the most rows.
struct Tally {
    double right = 0;
    int fewest = 1 << 30, most = 0;
    void add(const RowScore& score, int rows) {
        right += score.right;
        fewest = std::min(fewest, rows);
        most = std::max(most, rows);
    }
    std::string rows() const {
        return fewest == most ? std::to_string(most) : std::to_string(fewest) + "–" + std::to_string(most);
    }
    double percent() const { return 100 * right / kFields; }
};

void printLine(WalkPlan plan) {
    Tally gaps, kept, deleted;
    int rows = 0;
    for (plan.seed = 1; plan.seed <= kFields; ++plan.seed) {
        MadeWalk walk = madeWalk(plan);
        rows = walk.rows;
        const GapOutcome best = bestByGaps(walk);
        gaps.add(best.score, best.score.rows);
        walk.survey.MinDistance = plan.paused ? best.distance : kNoGap;
        const RowTurns found = findRowTurns(walk.survey, proposedTurnParameters(walk.survey));
        kept.add(scoreRows(walk, rowsWithTurnsKept(walk.survey, found)), found.rows);
        deleted.add(scoreRows(walk, found.row), found.rows);
    }
    std::printf("| %s%s | %.1f | %.0f %% | %d | %.1f %% | %d | %.1f %% | %s | %.1f %% | %.1f %% | %s |\n",
                kKinds[static_cast<int>(plan.kind)], plan.paused ? ", paused" : "", plan.noise,
                100 * plan.repeated, plan.rests, 100 * plan.lost, rows, gaps.percent(), gaps.rows().c_str(),
                kept.percent(), deleted.percent(), kept.rows().c_str());
}

void printTable() {
    constexpr WalkPlan kPlans[] = {{},
                                   {.noise = 0.1},
                                   {.noise = 0.3},
                                   {.noise = 0.5},
                                   {.repeated = 0.6},
                                   {.noise = 0.3, .repeated = 0.6},
                                   {.noise = 0.3, .rests = 30},
                                   {.noise = 0.5, .rests = 30},
                                   {.noise = 0.3, .lost = 0.001},
                                   {.noise = 0.3, .lost = 0.01},
                                   {.noise = 0.3, .lost = 0.1},
                                   {.noise = 0.3, .repeated = 0.6, .rests = 20, .lost = 0.05},
                                   {.paused = true},
                                   {.noise = 0.3, .paused = true},
                                   {.noise = 0.5, .repeated = 0.3, .rests = 10, .paused = true},
                                   {.noise = 0.3, .lost = 0.01, .paused = true}};
    std::puts(
        "| field | noise, m | repeated | rests | lost | rows | gaps: right | gaps: rows | turns: right | "
        "turns deleted: right | turns: rows |");
    std::puts("|---|---|---|---|---|---|---|---|---|---|---|");
    for (int kind = 0; kind <= static_cast<int>(WalkKind::kTwoBlocks); ++kind)
        for (WalkPlan plan : kPlans) {
            plan.kind = static_cast<WalkKind>(kind);
            // Nothing lies between the sides of a spiral.
            if (!plan.paused || plan.kind != WalkKind::kSpiral) printLine(plan);
        }
}

}  // namespace

}  // namespace tessel

int main() {
    tessel::printTable();
}
