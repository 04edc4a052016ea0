// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/made_faults.h"

#include "rows/row_detection.h"

#include <cmath>
#include <random>

namespace tessel {

namespace {

constexpr SiteIndex kRows = 40;
constexpr SiteIndex kSitesInRow = 100;

double hill(double x, double y, double atX, double atY, double width) {
    return std::exp(-((x - atX) * (x - atX) + (y - atY) * (y - atY)) / (2 * width * width));
}

double hundredths(double value) {
    return std::round(value * 100) / 100;
}

class FieldMaker {
  public:
    explicit FieldMaker(unsigned seed) : random_(seed) {
        made_.survey.NumSites = kRows * kSitesInRow;
        made_.survey.SiteData.resize(made_.survey.NumSites);
        made_.survey.TwoEMColumns = true;
        made_.isFault.assign(static_cast<std::size_t>(made_.survey.NumSites), 0);
        for (SiteIndex i = 0; i < made_.survey.NumSites; ++i)
            placeSite(i);
    }

    // Plants faults of a kind in runs of `fewest` to `most` sites.
    void plant(SuspectRule kind) {
        constexpr int kLengths[kSuspectRules][2] = {{1, 1}, {1, 2}, {6, 12},  {1, 3},
                                                    {1, 4}, {1, 5}, {12, 20}, {1, 4}};
        std::uniform_int_distribution<SiteIndex> length(kLengths[kind][0], kLengths[kind][1]);
        const SiteIndex faults = made_.survey.NumSites / 100;
        for (SiteIndex planted = 0; planted < faults;) {
            const SiteIndex count = length(random_);
            const SiteIndex first =
                std::uniform_int_distribution<SiteIndex>(0, kRows - 1)(random_) * kSitesInRow +
                std::uniform_int_distribution<SiteIndex>(8, kSitesInRow - 30)(random_);
            if (isTaken(first - 2, count + 4)) continue;
            spoil(kind, first, count);
            planted += count;
        }
    }

    FaultySurvey done() {
        made_.survey.chooseDistance(1);
        Calculate_Distance(made_.survey);
        made_.survey.NumRows = kRows;
        Calculate_NumPoints(made_.survey);
        return std::move(made_);
    }

  private:
    double random(double from, double to) {
        return std::uniform_real_distribution<double>(from, to)(random_);
    }
    double noise(double deviation) { return std::normal_distribution<double>(0, deviation)(random_); }

    void placeSite(SiteIndex i) {
        const SiteIndex row = i / kSitesInRow;
        const auto along =
            static_cast<double>(row % 2 == 0 ? i % kSitesInRow : kSitesInRow - 1 - i % kSitesInRow);
        const double across = static_cast<double>(row) * 5;
        const double truth = 40 + 0.08 * along + 10 * std::sin(across / 40) +
                             25 * hill(along, across, 30, 60, 9) + 30 * hill(along, across, 70, 140, 12);
        SiteTable& sites = made_.survey.SiteData;
        sites(kX, i) = hundredths(544000 + across + noise(0.1));
        sites(kY, i) = hundredths(5806000 + along + noise(0.1));
        sites(kEM1, i) = hundredths(truth + noise(0.5));
        sites(kEM2, i) = hundredths(5 + 0.7 * truth + noise(0.5));
        sites(kRow, i) = static_cast<double>(row + 1);
    }

    bool isTaken(SiteIndex first, SiteIndex count) const {
        for (SiteIndex i = first; i < first + count; ++i)
            if (made_.isFault[static_cast<std::size_t>(i)] != 0) return true;
        return false;
    }

    void spoil(SuspectRule kind, SiteIndex first, SiteIndex count) {
        const double sign = random(-1, 1) < 0 ? -1 : 1;
        const double size = sign * random(6, 25);
        const double angle = random(0, 6.28);
        const double far = random(25, 80);
        SiteTable& sites = made_.survey.SiteData;
        for (SiteIndex i = first; i < first + count; ++i) {
            made_.isFault[static_cast<std::size_t>(i)] = 1;
            if (kind == kOutsideLimits) sites(kEM1, i) = -random(0.5, 20);
            if (kind == kSpike || kind == kUnlikeAround) sites(kEM1, i) += size, sites(kEM2, i) += 0.7 * size;
            if (kind == kJump) sites(kX, i) += far * std::cos(angle), sites(kY, i) += far * std::sin(angle);
            if (kind == kRepeatedPlace) copy(first - 1, i, {kX, kY});
            if (kind == kFarAway) sites(kX, i) = sites(kY, i) = 0;
            if (kind == kStuckReading && i > first) copy(first, i, {kEM1, kEM2});
            if (kind == kReadingsApart) sites(kEM2, i) += size;
        }
    }

    void copy(SiteIndex from, SiteIndex to, const std::vector<int>& columns) {
        for (const int column : columns)
            made_.survey.SiteData(column, to) = made_.survey.SiteData(column, from);
    }

    std::mt19937 random_;
    FaultySurvey made_;
};

}  // namespace

FaultySurvey surveyWithFaults(SuspectRule kind, unsigned seed) {
    FieldMaker maker(seed);
    maker.plant(kind);
    return maker.done();
}

FaultySurvey surveyWithoutFaults(unsigned seed) {
    return FieldMaker(seed).done();
}

FaultScore scoreFlags(const FaultySurvey& made, const std::vector<std::uint8_t>& flags) {
    double faults = 0;
    double found = 0;
    double wrong = 0;
    for (std::size_t i = 0; i < flags.size(); ++i) {
        faults += made.isFault[i];
        if (flags[i] != 0) (made.isFault[i] != 0 ? found : wrong) += 1;
    }
    const auto others = static_cast<double>(flags.size()) - faults;
    return {faults > 0 ? found / faults : 0, wrong / others};
}

}  // namespace tessel
