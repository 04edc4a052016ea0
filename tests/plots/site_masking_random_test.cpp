// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/site_masking.h"
#include "rows/row_editing.h"
#include "support/made_survey.h"

namespace tessel {

// A second version, written plainly from the rules, on sites as records instead of columns.
namespace plain {

struct Model {
    std::vector<MadeSite> sites;
    std::set<double> masked;  // by site ID number
    int numRows;

    void mask(const MapExtent& e, double x1, double y1, double x2, double y2) {
        const double west = std::min(e.surveyX(x1), e.surveyX(x2));
        const double east = std::max(e.surveyX(x1), e.surveyX(x2));
        const double south = std::min(e.surveyY(y1), e.surveyY(y2));
        const double north = std::max(e.surveyY(y1), e.surveyY(y2));
        for (const MadeSite& site : sites)
            if (site.x > west && site.x < east && site.y > south && site.y < north) masked.insert(site.id);
    }

    void deleteMasked() {
        std::erase_if(sites, [this](const MadeSite& site) { return masked.contains(site.id); });
        masked.clear();
    }

    bool validate() {
        bool ok = sites.front().row == 1 && sites.back().row == numRows;
        for (std::size_t i = 1; i < sites.size(); ++i) {
            const double step = sites[i].row - sites[i - 1].row;
            if (step != 0 && step != 1) ok = false;
        }
        if (!ok) {
            for (MadeSite& site : sites)
                site.row = 1;
            numRows = 1;
        }
        return ok;
    }
};

}  // namespace plain

// What the map does when it is closed; false when the row information is lost.
bool validated(Survey& survey) {
    if (ValidateRowInfo(survey)) return true;
    makeOneRow(survey);
    return false;
}

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
    const int rows = static_cast<int>(between(1, 9));
    plain::Model model{makeSites(rows), {}, rows};
    Survey survey = surveyWithRows(model.sites);
    survey.NumRows = survey.RowIndex = rows;
    survey.chooseDistance(static_cast<int>(between(1, 3)));
    Calculate_Chosen_Distance(survey);
    const MapExtent extent{0, 16, 0, 16};
    SiteMaskArray mask(static_cast<std::size_t>(survey.NumSites), 0);

    for (int act = 0; act < 12 && survey.NumSites > 0; ++act) {
        double x1 = between(0, 16) / 16, x2 = between(0, 16) / 16;
        double y1 = between(0, 16) / 16, y2 = between(0, 16) / 16;
        model.mask(extent, x1, y1, x2, y2);
        EXPECT_EQ(MaskSites(survey, extent, mask, x1, y1, x2, y2),
                  static_cast<SiteIndex>(model.masked.size()));
        for (std::size_t i = 0; i < mask.size(); ++i)
            EXPECT_EQ(mask[i] != 0, model.masked.contains(model.sites[i].id));
        if (act % 3 != 2) continue;
        const auto before = model.sites.size();
        model.deleteMasked();
        EXPECT_EQ(deleteMaskedSites(survey, mask).sites, static_cast<SiteIndex>(before - model.sites.size()));
        EXPECT_EQ(sitesIn(survey), model.sites);
        Survey fresh = survey;
        Calculate_Chosen_Distance(fresh);
        EXPECT_EQ(survey.TrueDist, fresh.TrueDist);
        EXPECT_EQ(survey.XDist, fresh.XDist);
        EXPECT_EQ(survey.YDist, fresh.YDist);
    }
    if (survey.NumSites == 0) return;
    EXPECT_EQ(validated(survey), model.validate());
    EXPECT_EQ(sitesIn(survey), model.sites);
    EXPECT_EQ(survey.NumRows, model.numRows);
    const auto kept = survey.NumPoints;
    Calculate_NumPoints(survey);
    EXPECT_EQ(survey.NumPoints, kept);
    EXPECT_EQ(survey.RowIndex, survey.NumRows);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomSurveys, testing::Range(1U, 201U));

}  // namespace tessel
