// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/survey_facts.h"

#include "app/column_statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <numeric>

namespace tessel {

namespace {

// From here on a square may be too large for a Double.
constexpr double kLargeStep = 1e150;

// Half of all moves are shorter: half a millimetre if they are metres, which no receiver tells apart, and
// some fifty metres if they are degrees.
constexpr double kShortMove = 0.0005;

double carefulDistance(double dx, double dy) {
    return std::min(std::hypot(dx, dy), std::numeric_limits<double>::max());
}

// The lengths of the moves of a survey, in any order.
class Moves {
  public:
    explicit Moves(const Survey& survey)
        : lengths_(std::make_unique_for_overwrite<double[]>(static_cast<std::size_t>(survey.NumSites))) {
        const double* const x = survey.SiteData.column(kX);
        const double* const y = survey.SiteData.column(kY);
        for (SiteIndex i = 1; i < survey.NumSites; ++i) {
            const double dx = x[i] - x[i - 1];
            const double dy = y[i] - y[i - 1];
            double length = std::sqrt(dx * dx + dy * dy);
            if (!(length < kLargeStep)) length = carefulDistance(dx, dy);
            // Written always and kept only if it is a move: no branch that half of all files would take.
            lengths_[static_cast<std::size_t>(count_)] = length;
            count_ += (dx != 0) | (dy != 0);
        }
        sortedBelow_ = count_;
    }

    SiteIndex count() const { return count_; }

    // The median of the moves and of as many zeros: the middle of the sorted values, or the mean of the two
    // in the middle. Asked with more zeros than before, it looks at the shorter moves only.
    double medianWithZeros(SiteIndex zeros) {
        const SiteIndex all = count_ + zeros;
        const SiteIndex middle = all / 2 - zeros;  // among the moves
        if (all == 0 || middle < 0) return 0;
        double* const first = lengths_.get();
        std::nth_element(first, first + middle, first + sortedBelow_);
        sortedBelow_ = std::min(middle + 1, count_);
        const double upper = first[middle];
        if (all % 2 == 1) return upper;
        return std::midpoint(middle == 0 ? 0 : *std::max_element(first, first + middle), upper);
    }

  private:
    std::unique_ptr<double[]> lengths_;
    SiteIndex count_ = 0;
    SiteIndex sortedBelow_ = 0;  // what lies from here on is no shorter than what lies before
};

SiteIndex sitesAtZero(const Survey& survey) {
    const double* const x = survey.SiteData.column(kX);
    const double* const y = survey.SiteData.column(kY);
    SiteIndex count = 0;
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        count += (x[i] == 0) & (y[i] == 0);
    return count;
}

double largestMagnitude(const Interval& range) {
    return std::max(std::abs(range.from), std::abs(range.to));
}

// Whichever of the two comes first in the file.
bool canBeLongitudeAndLatitude(const SurveyFacts& facts) {
    const auto [smaller, larger] =
        std::minmax({largestMagnitude(facts.ranges[kX]), largestMagnitude(facts.ranges[kY])});
    return smaller <= 90 && larger <= 180;
}

}  // namespace

SurveyFacts surveyFacts(const Survey& survey) {
    SurveyFacts facts;
    if (survey.NumSites < 1) return facts;
    for (int column = kX; column <= kEM2; ++column) {
        const ColumnMinMax found = Column_MinMax(survey, column);
        facts.ranges[static_cast<std::size_t>(column)] = {found.minimum, found.maximum};
    }
    Moves moves(survey);
    facts.steps = survey.NumSites - 1;
    facts.repeatedPositions = facts.steps - moves.count();
    facts.medianMove = moves.medianWithZeros(0);
    facts.medianStep =
        facts.repeatedPositions > 0 ? moves.medianWithZeros(facts.repeatedPositions) : facts.medianMove;
    facts.sitesAtZero = sitesAtZero(survey);
    facts.looksLikeDegrees =
        moves.count() > 0 && facts.medianMove < kShortMove && canBeLongitudeAndLatitude(facts);
    return facts;
}

}  // namespace tessel
