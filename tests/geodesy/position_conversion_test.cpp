// SPDX-License-Identifier: GPL-3.0-or-later
#include "geodesy/position_conversion.h"

#include "base/run_time_error.h"
#include "geodesy/coordinate_systems.h"
#include "support/failing_allocations.h"
#include "support/made_acts.h"
#include "support/made_survey.h"
#include "support/survey_bits.h"
#include "support/survey_invariants.h"

namespace tessel {

namespace {

constexpr PositionRequest kToZone30{PositionKind::kDegrees, false, 32630};

// Two rows in England, in degrees; a missing fix, and a latitude that is none.
Survey inDegrees() {
    return madeSurvey({{-2.3, 52.4, 20, 40, 1},
                       {-2.3, 52.4001, 21, 41, 1},
                       {0, 0, 22, 42, 1},
                       {-2.299, 52.4001, 23, 43, 2},
                       {-2.299, 92, 24, 44, 2},
                       {-2.299, 52.4, 25, 45, 2}});
}

class Conversion : public testing::Test {
  protected:
    void convert(const PositionRequest& request = kToZone30) { tessel::convert(journal, request); }
    double x(SiteIndex site) const { return journal.survey().SiteData(kX, site); }
    double y(SiteIndex site) const { return journal.survey().SiteData(kY, site); }

    Journal journal = journalOf(inDegrees());
};

}  // namespace

TEST(PositionChecks, CountWhatCannotBeConvertedAndNameTheFirst) {
    const Survey survey = inDegrees();
    const PositionCheck check = checkPositions(survey, kToZone30);
    EXPECT_EQ(check.positions, 4);
    EXPECT_EQ(check.outOfRange, 1);
    EXPECT_EQ(check.missing, 1);
    EXPECT_EQ(check.firstBad, (std::vector<SiteIndex>{2, 4}));
    ASSERT_TRUE(check.middle);
    EXPECT_EQ(check.middle->longitude, -2.299);
    EXPECT_EQ(check.middle->latitude, 52.4001);
    EXPECT_EQ(badPositionsInWords(survey, check),
              "2 positions stay as they are: 1 out of range, 1 at 0, 0 (line 5, 9).");
}

TEST(PositionChecks, NameFivePositionsAtMostBySitesWhereThereAreNoLines) {
    Survey survey = madeSurvey(std::vector<MadeSite>(7));
    survey.SourceLine.clear();
    const PositionCheck check = checkPositions(survey, kToZone30);
    EXPECT_FALSE(check.middle);
    EXPECT_EQ(badPositionsInWords(survey, check),
              "7 positions stay as they are: 7 at 0, 0 (site 1, 2, 3, 4, 5, ...).");
    EXPECT_EQ(badPositionsInWords(survey, PositionCheck()), "");
    Survey one = madeSurvey({{0, 91, 1, 1, 1}});
    EXPECT_EQ(badPositionsInWords(one, checkPositions(one, kToZone30)),
              "1 position stays as it is: 1 out of range (line 1).");
}

TEST(PositionChecks, ReadMinutesAndTakeTheLatitudeFirstWhereAsked) {
    const Survey survey = madeSurvey({{5224.461145, -220.67328, 1, 1, 1}, {5260, -220, 1, 1, 1}});
    const PositionCheck check = checkPositions(survey, {PositionKind::kDegreesMinutes, true, 0});
    EXPECT_EQ(check.positions, 1);
    EXPECT_EQ(check.outOfRange, 1);
    ASSERT_TRUE(check.middle);
    EXPECT_EQ(check.middle->latitude, degreesFromMinutes(5224.461145));
    EXPECT_EQ(check.middle->longitude, degreesFromMinutes(-220.67328));
}

TEST_F(Conversion, MakesMetresOfDegreesAndKeepsWhatIsNoPosition) {
    const Survey before = journal.survey();
    convert();
    std::vector<double> eastings = {-2.3, -2.3, -2.299, -2.299}, northings = {52.4, 52.4001, 52.4001, 52.4};
    Transformation(32630).toMetres(eastings.data(), northings.data(), 4);
    const SiteIndex converted[] = {0, 1, 3, 5};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(x(converted[i]), eastings[i]);
        EXPECT_EQ(y(converted[i]), northings[i]);
    }
    for (const SiteIndex site : {2, 4}) {
        EXPECT_EQ(x(site), before.SiteData(kX, site));
        EXPECT_EQ(y(site), before.SiteData(kY, site));
    }
    EXPECT_EQ(journal.survey().PositionsCRS, 32630);
    EXPECT_EQ(
        journal.act(1).words,
        "Converted positions from degrees to EPSG:32630  WGS 84 / UTM zone 30N, 2 positions kept as they "
        "were");
    EXPECT_EQ(wordOf(journal.act(1).kind), std::string("convert-positions"));
}

TEST_F(Conversion, LeavesRowsAndReadingsAloneAndMeasuresAnew) {
    const std::vector<MadeSite> before = sitesIn(journal.survey());
    convert();
    std::vector<MadeSite> after = sitesIn(journal.survey());
    for (std::size_t i = 0; i < after.size(); ++i) {
        after[i].x = before[i].x;
        after[i].y = before[i].y;
    }
    EXPECT_EQ(after, before);
    EXPECT_EQ(journal.survey().TrueDist, distancesBy(journal.survey(), 1));
    EXPECT_TRUE(journal.survey().XDist.empty() && journal.survey().YDist.empty());
    EXPECT_EQ(brokenInvariant(journal.survey()), "");
}

// Whatever distances there were, and whatever is measured for a plot in between.
TEST_F(Conversion, IsTakenBackAndDoneAgainToTheBit) {
    for (const int measured : {0, 2, 3}) {
        journal.remeasure([&](const Survey& survey, SurveyCounts& counts, DistanceArrays& distances) {
            measureDistances(survey, measured, counts, distances);
        });
        const Survey before = journal.survey();
        convert();
        const Survey after = journal.survey();
        journal.goTo(1);
        EXPECT_EQ(differences(journal.survey(), before), "") << measured;
        journal.goTo(2);
        EXPECT_EQ(differences(journal.survey(), after), "") << measured;
        journal.goTo(1);
    }
    EXPECT_NE(journal.content(), journal.act(1).content);
}

TEST_F(Conversion, FitsBetweenOtherActs) {
    deleteRow(journal, 1);
    const Survey before = journal.survey();
    convert();
    findRows(journal, 2, 3);
    const Survey after = journal.survey();
    journal.goTo(1);
    journal.goTo(2);
    EXPECT_EQ(differences(journal.survey(), before), "");
    journal.goTo(4);
    EXPECT_EQ(differences(journal.survey(), after), "");
}

TEST_F(Conversion, ThatOnlyNamesTheSystemChangesNoPosition) {
    const PositionRequest named{PositionKind::kCRS, false, 27700}, grid;
    EXPECT_TRUE(changesSurvey(journal.survey(), named));
    EXPECT_FALSE(changesSurvey(journal.survey(), grid));
    EXPECT_TRUE(changesSurvey(journal.survey(), kToZone30));
    const std::vector<MadeSite> before = sitesIn(journal.survey());
    convert(named);
    EXPECT_EQ(sitesIn(journal.survey()), before);
    EXPECT_EQ(journal.survey().PositionsCRS, 27700);
    EXPECT_FALSE(changesSurvey(journal.survey(), named));
    EXPECT_TRUE(journal.act(1).words.starts_with("Said that positions are in EPSG:27700  "));
    convert(grid);
    EXPECT_EQ(journal.survey().PositionsCRS, 0);
    journal.goTo(2);
    EXPECT_EQ(journal.survey().PositionsCRS, 27700);
}

TEST_F(Conversion, ToASystemThatIsNotKnownChangesNothing) {
    EXPECT_THROW(convert({PositionKind::kDegrees, false, 1}), RunTimeError);
    EXPECT_EQ(journal.size(), 1U);
}

TEST_F(Conversion, WithoutMemoryChangesNothing) {
    const Survey before = journal.survey();
    for (long successes = 0;; ++successes) {
        ConvertedPositions positions = convertedPositions(journal.survey(), kToZone30);
        const ActDescription act = describe(positions);
        try {
            const FailingAllocations none(successes);
            journal.perform(act,
                            [&](Survey& survey) { return replacePositions(survey, std::move(positions)); });
            break;
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(differences(journal.survey(), before), "") << successes;
        }
    }
    EXPECT_EQ(journal.size(), 2U);
}

}  // namespace tessel
