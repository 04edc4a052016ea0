// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/random_acts.h"

#include "analysis/suspect_deletion.h"
#include "app/site_runs.h"
#include "rows/row_acts.h"
#include "rows/row_editing.h"
#include "support/made_acts.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

class Hand {
  public:
    Hand(Journal& journal, std::mt19937& random) : journal_(journal), random_(random) {}

    void act() {
        const Survey& survey = journal_.survey();
        const bool hasRows = survey.NumSites > 0 && survey.NumRows > 0 && rowsAreUsable(survey);
        const int choice = below(hasRows ? 20 : survey.NumSites > 0 ? 4 : 3);
        if (!hasRows && choice == 3) return deleteMasked();
        if (choice == 0) return import();
        if (choice < 3) return journal_.goTo(aPlaceToRest());
        journal_.recount(countPoints);
        if (choice < 5) return deleteRow(journal_, 1 + below(survey.NumRows));
        if (choice < 7) return deleteMasked();
        if (choice < 9) return deletePicked(journal_, 1 + below(survey.NumRows), {1});
        if (choice == 9)
            return survey.NumRows > 1 ? joinRows(journal_, 1 + below(survey.NumRows - 1)) : note();
        if (choice == 10) return static_cast<void>(findRows(journal_, 1 + below(3), below(40) / 4.0));
        if (choice == 11) return adjust(journal_, {AdjustmentKind::kAddToEM1, "0.1", "", "", ""});
        if (choice < 14) return measure(1 + below(3));
        if (choice < 16) return note();
        choice < 18 ? deleteRepeated() : convert();
    }

  private:
    int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }

    void import() {
        Survey next = below(8) == 0 ? Survey{} : randomRows(random_, 1 + below(8), below(4) == 0 ? 120 : 30);
        if (below(3) == 0) next.SiteIDPresent = false, next.SiteID.clear();
        if (below(3) == 0) next.TwoEMColumns = false;
        if (below(4) == 0) next.SourceLine.clear();
        static_cast<SurveyParameters&>(next) = journal_.survey();
        next.chooseDistance(1);
        journal_.replaceSurvey({ActKind::kImport,
                                "import \"\xFC\".dat",
                                "Imported \"\xFC\".dat",
                                {{"file", "/a/\xFC\n.dat"}, {"lines", "12"}}},
                               std::move(next));
    }

    std::size_t aPlaceToRest() {
        auto place = static_cast<std::size_t>(below(static_cast<int>(journal_.size()) + 1));
        while (place < journal_.size() && !journal_.canRestAt(place))
            ++place;
        return place;
    }

    void deleteMasked() {
        SiteMaskArray mask(static_cast<std::size_t>(journal_.survey().NumSites));
        for (std::uint8_t& mark : mask)
            mark = below(5) == 0 ? 1 : 0;
        mask[mask.size() / 2] = 1;
        tessel::deleteMasked(journal_, std::move(mask));
        if (journal_.survey().NumSites == 0 || ValidateRowInfo(journal_.survey())) return;
        journal_.cannotRest();
        journal_.perform(lossOfRows(), makeOneRow);
    }

    // Of sites at one place the first stays with the mean of their readings, or one that is there.
    void deleteRepeated() {
        const Survey& survey = journal_.survey();
        SuspectParameters parameters;
        parameters.uses[kRepeatedPlace] = true;
        parameters.repeated = below(4) == 0 ? RepeatedPlaces::kKeepLast : RepeatedPlaces::kKeepMean;
        std::vector<std::uint8_t> marks = findSuspects(survey, parameters).flags;
        for (std::uint8_t& mark : marks)
            mark = mark != 0 ? 1 : 0;
        const std::vector<IndexRange> runs = markedRuns(marks);
        if (runs.empty()) return deleteRow(journal_, 1 + below(survey.NumRows));
        journal_.perform(deletionOfSuspects(survey, parameters, sitesIn(runs), 0),
                         [&](Survey& changed) { return deleteSuspects(changed, runs, parameters); });
    }

    void convert() {
        const std::array kinds = {PositionKind::kGrid, PositionKind::kDegrees, PositionKind::kDegreesMinutes,
                                  PositionKind::kCRS};
        const PositionKind kind = kinds[static_cast<std::size_t>(below(4))];
        tessel::convert(journal_, {kind, below(2) == 0, 32630 + below(3)});
    }

    void measure(int mode) {
        journal_.remeasure([=](const Survey& survey, SurveyCounts& counts, DistanceArrays& distances) {
            measureDistances(survey, mode, counts, distances);
        });
    }

    void note() {
        SurveyParameters typed = journal_.survey();
        typed.MinDistance = below(10);
        switch (below(4)) {
            case 0:
                return journal_.setParameters(typed);
            case 1:
                return journal_.noteExport();
            case 2:
                return journal_.noteMenus(static_cast<std::uint32_t>(below(1 << 15)));
            default:
                return journal_.recount(findExtents);
        }
    }

    Journal& journal_;
    std::mt19937& random_;
};

}  // namespace

void doAtRandom(Journal& journal, std::mt19937& random) {
    Hand(journal, random).act();
}

Journal randomSession(unsigned seed, int acts) {
    std::mt19937 random(seed);
    Journal journal(std::size_t{1} << 30);
    for (int i = 0; i < acts; ++i)
        doAtRandom(journal, random);
    return journal;
}

}  // namespace tessel
