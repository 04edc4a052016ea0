// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/survey_fingerprint.h"

#include "support/made_survey.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tessel {

namespace {

Survey twelveSites() {
    std::vector<MadeSite> sites;
    for (int i = 0; i < 12; ++i)
        sites.push_back({double(i), double(2 * i), 30.0 + i, 40.0 + i, i < 6 ? 1.0 : 2.0});
    return madeSurvey(sites);
}

}  // namespace

TEST(SurveyFingerprint, IsTheSameForTheSameSites) {
    Survey other = twelveSites();
    other.SiteData.resize(20);  // entries behind the last site are none
    other.MinDistance = 7;      // and no file holds the distance
    EXPECT_EQ(surveyFingerprint(twelveSites()), surveyFingerprint(other));
}

TEST(SurveyFingerprint, ChangesWithTheLastBitOfEveryValue) {
    const Survey before = twelveSites();
    for (SiteIndex site = 0; site < before.NumSites; ++site)
        for (const int column : {kX, kY, kEM1, kEM2, kRow}) {
            Survey after = before;
            after.SiteData(column, site) = std::nextafter(after.SiteData(column, site), 1e9);
            EXPECT_NE(surveyFingerprint(before), surveyFingerprint(after)) << column << " " << site;
        }
    Survey after = before;
    after.SiteID[3] += 1;
    EXPECT_NE(surveyFingerprint(before), surveyFingerprint(after));
}

TEST(SurveyFingerprint, ChangesWhenSitesGoOrChangePlaces) {
    const Survey before = twelveSites();
    Survey shorter = before;
    shorter.NumSites = 11;
    EXPECT_NE(surveyFingerprint(before), surveyFingerprint(shorter));
    Survey swapped = before;
    std::swap(swapped.SiteData(kX, 2), swapped.SiteData(kX, 3));
    EXPECT_NE(surveyFingerprint(before), surveyFingerprint(swapped));
    Survey farApart = before;
    std::swap(farApart.SiteData(kEM1, 1), farApart.SiteData(kEM1, 9));
    EXPECT_NE(surveyFingerprint(before), surveyFingerprint(farApart));
}

TEST(SurveyFingerprint, OfNoSiteExists) {
    EXPECT_EQ(surveyFingerprint(Survey{}), surveyFingerprint(Survey{}));
}

}  // namespace tessel
