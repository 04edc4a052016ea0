// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/site_masking.h"
#include "rows/row_editing.h"
#include "support/made_survey.h"
#include "support/plain_survey.h"

namespace tessel {

namespace {

// The sites inside of a rectangle of the map, beside those that are masked already.
void maskPlainly(const PlainSurvey& survey, std::vector<bool>& masked, const MapExtent& e, double x1,
                 double y1, double x2, double y2) {
    const auto [west, east] = std::minmax({e.surveyX(x1), e.surveyX(x2)});
    const auto [south, north] = std::minmax({e.surveyY(y1), e.surveyY(y2)});
    for (std::size_t i = 0; i < masked.size(); ++i) {
        const PlainSite& site = survey.sites[i];
        if (site.x > west && site.x < east && site.y > south && site.y < north) masked[i] = true;
    }
}

}  // namespace

class RandomSurveys : public testing::TestWithParam<unsigned> {
  protected:
    std::mt19937 random{GetParam()};

    double between(int low, int high) { return std::uniform_int_distribution(low, high)(random); }

    // On a coarse grid, so that rectangle edges fall onto sites.
    std::vector<MadeSite> makeSites(int rows) {
        std::vector<MadeSite> sites;
        for (int row = 1; row <= rows; ++row)
            for (int k = static_cast<int>(between(1, 12)); k > 0; --k)
                sites.push_back({between(0, 16), between(0, 16), between(1, 99), between(1, 99),
                                 static_cast<double>(row), static_cast<double>(sites.size())});
        return sites;
    }
};

TEST_P(RandomSurveys, AreMaskedDeletedAndCheckedAsThePlainRulesSay) {
    Survey survey = surveyWithRows(makeSites(static_cast<int>(between(1, 9))));
    survey.chooseDistance(static_cast<int>(between(1, 3)));
    Calculate_Chosen_Distance(survey);
    PlainSurvey plain = plainSurveyOf(survey);
    std::vector<bool> masked(plain.sites.size());
    SiteMaskArray mask(plain.sites.size(), 0);
    const MapExtent extent{0, 16, 0, 16};

    for (int act = 0; act < 12 && survey.NumSites > 0; ++act) {
        double x1 = between(0, 16) / 16, x2 = between(0, 16) / 16;
        double y1 = between(0, 16) / 16, y2 = between(0, 16) / 16;
        maskPlainly(plain, masked, extent, x1, y1, x2, y2);
        const SiteIndex count = std::ranges::count(masked, true);
        EXPECT_EQ(MaskSites(survey, extent, mask, x1, y1, x2, y2), count);
        EXPECT_EQ(std::vector<bool>(mask.begin(), mask.end()), masked);
        if (act % 3 != 2) continue;
        deleteMarkedPlainSites(plain, masked);
        masked.assign(plain.sites.size(), false);
        EXPECT_EQ(deleteMaskedSites(survey, mask).sites, count);
        expectAsPlain(survey, plain);
    }
    if (survey.NumSites == 0) return;
    const bool isInOrder = ValidateRowInfo(survey);
    EXPECT_EQ(isInOrder, validatePlainRows(plain));
    if (!isInOrder) makeOneRow(survey);
    expectAsPlain(survey, plain);
    EXPECT_EQ(survey.RowIndex, survey.NumRows);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomSurveys, testing::Range(1U, 201U));

}  // namespace tessel
