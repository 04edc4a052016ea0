// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/made_walks.h"

#include "rows/row_detection.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <random>

namespace tessel {

namespace {

constexpr double kSpacing = 8;
constexpr double kRowLength = 100;

struct Corner {
    double x, y;
    bool inRow;  // the way to this corner belongs to a row
};

// The way as corners near each other; a row begins with each call of row().
class Way {
  public:
    explicit Way(double x, double y) : corners_{{x, y, false}} {}
    void to(double x, double y, bool inRow) { corners_.push_back({x, y, inRow}); }
    void row(double x, double y) { to(x, y, true); }
    void between(double x, double y) { to(x, y, false); }
    // Along a circle, from one angle (radians) to another.
    void around(double x, double y, double radius, double from, double until) {
        constexpr int kParts = 40;
        for (int i = 1; i <= kParts; ++i) {
            const double angle = from + (until - from) * i / kParts;
            between(x + radius * std::cos(angle), y + radius * std::sin(angle));
        }
    }
    const Corner& last() const { return corners_.back(); }
    const std::vector<Corner>& corners() const { return corners_; }

  private:
    std::vector<Corner> corners_;
};

void toAndFro(Way& way, int rows, double length) {
    for (int row = 0; row < rows; ++row) {
        const Corner at = way.last();
        const double end = at.y + (row % 2 == 0 ? length : -length);
        way.row(at.x, end);
        if (row + 1 < rows) way.between(at.x + kSpacing, end);
    }
}

Way boustrophedon() {
    Way way(0, 0);
    toAndFro(way, 20, kRowLength);
    return way;
}

// Sides of 160 m and 120 m, each turn 8 m further inwards, down to sides of 32 m.
Way spiral() {
    Way way(0, 0);
    constexpr double kHeadings[4][2] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
    double sides[2] = {160, 120};
    for (int side = 0; sides[side % 2] >= 32; ++side) {
        const Corner at = way.last();
        const auto& heading = kHeadings[side % 4];
        way.row(at.x + heading[0] * sides[side % 2], at.y + heading[1] * sides[side % 2]);
        way.between(way.last().x, way.last().y);
        if (side > 0) sides[side % 2] -= kSpacing;
        if (side == 0) sides[0] = 160 - kSpacing;
    }
    return way;
}

// From the end of a row around three arcs to the beginning of the next, to the right of it.
void loop(Way& way, double up) {
    constexpr double kRadius = 6;
    const double x = way.last().x;
    const double y = way.last().y;
    const double cosine = (kRadius + kSpacing / 2) / (2 * kRadius);
    const double a = std::acos(cosine);
    const double pi = std::numbers::pi;
    const double top = y + up * 2 * kRadius * std::sin(a);
    way.around(x - kRadius, y, kRadius, 0, up * a);
    way.around(x + kSpacing / 2, top, kRadius, up * (pi + a), -up * a);
    way.around(x + kSpacing + kRadius, y, kRadius, up * (pi - a), up * pi);
}

Way loops() {
    Way way(0, 0);
    for (int row = 0; row < 20; ++row) {
        const double up = row % 2 == 0 ? 1 : -1;
        way.row(way.last().x, up > 0 ? kRowLength : 0);
        if (row < 19) loop(way, up);
    }
    return way;
}

Way contour() {
    constexpr double kLength = 150;
    constexpr int kParts = 75;
    Way way(0, 0);
    for (int row = 0; row < 16; ++row) {
        const double base = row * kSpacing;
        for (int i = 0; i <= kParts; ++i) {
            const double x = (row % 2 == 0 ? i : kParts - i) * kLength / kParts;
            way.to(x, base + 12 * std::sin(x * 2 * std::numbers::pi / 200), i > 0);
        }
    }
    return way;
}

Way twoBlocks() {
    Way way(0, 0);
    toAndFro(way, 12, kRowLength);
    way.between(way.last().x + 30, 0);
    for (int row = 0; row < 12; ++row) {
        const Corner at = way.last();
        way.row(at.x + (row % 2 == 0 ? 60 : -60), at.y);
        if (row < 11) way.between(way.last().x, at.y + kSpacing);
    }
    return way;
}

Way wayOf(WalkKind kind) {
    switch (kind) {
        case WalkKind::kSpiral:
            return spiral();
        case WalkKind::kLoops:
            return loops();
        case WalkKind::kContour:
            return contour();
        case WalkKind::kTwoBlocks:
            return twoBlocks();
        default:
            return boustrophedon();
    }
}

struct Fix {
    double x, y;
    int row, rowsBefore;
};

// A fix every metre or so. A row ends where the way does not belong to one.
std::vector<Fix> walk(const Way& way, std::mt19937& random, int& rows) {
    std::uniform_real_distribution<double> step(0.85, 1.15);
    std::vector<Fix> fixes;
    double ahead = 0;  // metres to the next fix
    bool inRow = false;
    const auto& corners = way.corners();
    for (std::size_t i = 1; i < corners.size(); ++i) {
        const Corner& a = corners[i - 1];
        const Corner& b = corners[i];
        if (b.inRow && !inRow) ++rows;
        inRow = b.inRow;
        const double length = std::hypot(b.x - a.x, b.y - a.y);
        for (; ahead < length; ahead += step(random)) {
            const double part = ahead / length;
            fixes.push_back({a.x + part * (b.x - a.x), a.y + part * (b.y - a.y), inRow ? rows : 0, rows});
        }
        ahead -= length;
    }
    return fixes;
}

// The logger stands still for 40 sites, so often.
std::vector<Fix> withRests(const std::vector<Fix>& fixes, int rests, std::mt19937& random) {
    std::vector<int> times(fixes.size(), 1);
    std::uniform_int_distribution<std::size_t> place(0, fixes.size() - 1);
    for (int i = 0; i < rests; ++i)
        times[place(random)] += 40;
    std::vector<Fix> rested;
    for (std::size_t i = 0; i < fixes.size(); ++i)
        rested.insert(rested.end(), static_cast<std::size_t>(times[i]), fixes[i]);
    return rested;
}

void placeAt(Survey& survey, SiteIndex i, double x, double y) {
    survey.SiteData(kX, i) = std::round(x * 100) / 100;
    survey.SiteData(kY, i) = std::round(y * 100) / 100;
}

// Turned by 17 degrees, at coordinates of a national grid, with noise.
void placeSites(Survey& survey, const std::vector<Fix>& fixes, const WalkPlan& plan, std::mt19937& random) {
    std::normal_distribution<double> noise(0, 1);
    std::uniform_real_distribution<double> chance(0, 1);
    const double turn = 17 * std::numbers::pi / 180;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        const Fix& fix = fixes[static_cast<std::size_t>(i)];
        const double dx = plan.noise * noise(random);
        const double dy = plan.noise * noise(random);
        if (i > 0 && chance(random) < plan.repeated) {
            placeAt(survey, i, survey.SiteData(kX, i - 1), survey.SiteData(kY, i - 1));
            continue;
        }
        placeAt(survey, i, 544000 + std::cos(turn) * fix.x - std::sin(turn) * fix.y + dx,
                5806000 + std::sin(turn) * fix.x + std::cos(turn) * fix.y + dy);
    }
}

void loseFixes(Survey& survey, double part, std::mt19937& random) {
    std::uniform_real_distribution<double> chance(0, 1);
    std::uniform_int_distribution<int> length(1, 5);
    for (SiteIndex i = 1; i < survey.NumSites; ++i) {
        if (chance(random) >= part / 3) continue;  // three in a row on average
        const SiteIndex end = std::min<SiteIndex>(survey.NumSites, i + length(random));
        for (; i < end; ++i)
            placeAt(survey, i, 0, 0);
    }
}

bool isRight(const MadeWalk& walk, std::size_t site, int row) {
    if (walk.row[site] > 0) return row == walk.row[site];
    return row == walk.rowsBefore[site] || row == walk.rowsBefore[site] + 1;
}

// For each row that was found the true row of most of its sites, or 0 where another has more of them.
std::map<int, int> trueRowOf(const MadeWalk& walk, const std::vector<int>& found) {
    std::map<std::pair<int, int>, int> shared;
    for (std::size_t i = 0; i < found.size(); ++i)
        if (found[i] > 0 && walk.row[i] > 0) ++shared[{found[i], walk.row[i]}];
    std::vector<std::pair<int, std::pair<int, int>>> most;
    for (const auto& [pair, sites] : shared)
        most.push_back({sites, pair});
    std::sort(most.rbegin(), most.rend());
    std::map<int, int> rowOf;
    std::map<int, bool> taken;
    for (const auto& [sites, pair] : most)
        if (rowOf.count(pair.first) == 0 && !taken[pair.second]) {
            rowOf[pair.first] = pair.second;
            taken[pair.second] = true;
        }
    return rowOf;
}

}  // namespace

MadeWalk madeWalk(const WalkPlan& plan) {
    std::mt19937 random(plan.seed);
    MadeWalk made;
    std::vector<Fix> fixes = walk(wayOf(plan.kind), random, made.rows);
    if (plan.paused) std::erase_if(fixes, [](const Fix& fix) { return fix.row == 0; });
    fixes = withRests(fixes, plan.rests, random);
    for (const Fix& fix : fixes) {
        made.row.push_back(fix.row);
        made.rowsBefore.push_back(fix.rowsBefore);
    }
    Survey& survey = made.survey;
    survey.NumSites = static_cast<SiteIndex>(fixes.size());
    survey.SiteData.resize(survey.NumSites);
    placeSites(survey, fixes, plan, random);
    loseFixes(survey, plan.lost, random);
    survey.chooseDistance(1);
    Calculate_Distance(survey);
    return made;
}

RowScore scoreRows(const MadeWalk& walk, const std::vector<int>& found) {
    std::map<int, int> rowOf = trueRowOf(walk, found);
    RowScore score;
    double right = 0;
    for (std::size_t i = 0; i < found.size(); ++i) {
        const bool isNone = found[i] == 0;
        right += (isNone ? walk.row[i] == 0 : isRight(walk, i, rowOf[found[i]])) ? 1 : 0;
        score.rows = std::max(score.rows, found[i]);
    }
    score.right = right / static_cast<double>(found.size());
    return score;
}

}  // namespace tessel
