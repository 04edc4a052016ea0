// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/row_numbers.h"

#include "support/made_survey.h"
#include "support/survey_bits.h"

namespace tessel {

namespace {

Survey surveyWithNumbers(const std::vector<double>& numbers) {
    Survey survey = surveyWithRows({});
    survey.NumSites = std::ssize(numbers);
    survey.SiteData.resize(survey.NumSites + 2);
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        survey.SiteData(kRow, i) = numbers[static_cast<std::size_t>(i)];
    return survey;
}

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

}  // namespace

TEST(RowNumbers, ComeBackToTheBitWhateverTheyAre) {
    const std::vector<double> columns[] = {{},
                                           {1},
                                           {1, 1, 1, 2, 2, 2},
                                           {1, 2, 3, 4, 5},
                                           {0.0, -0.0, -0.0, 0.0},
                                           {kNone, kNone, kNone, 2.5, 2.5, 2.5}};
    for (const std::vector<double>& column : columns) {
        Survey survey = surveyWithNumbers(column);
        const Survey before = survey;
        const RowNumbers numbers(survey);
        EXPECT_TRUE(numbers.areThoseOf(survey));
        for (SiteIndex i = 0; i < survey.NumSites; ++i)
            survey.SiteData(kRow, i) = 7;
        EXPECT_EQ(numbers.areThoseOf(survey), survey.NumSites == 0);
        numbers.putInto(survey);
        EXPECT_EQ(differences(survey, before), "");
    }
}

TEST(RowNumbers, TakeLittleRoomWhereRowsAreLongAndNeverMoreThanTheColumn) {
    std::vector<double> rows, every;
    for (int i = 0; i < 10000; ++i) {
        rows.push_back(1 + i / 1000);
        every.push_back(i);
    }
    EXPECT_LE(RowNumbers(surveyWithNumbers(rows)).bytes(), 10U * 16U);
    EXPECT_LE(RowNumbers(surveyWithNumbers(every)).bytes(), 10000U * sizeof(double));
}

TEST(RowNumbers, AreNotThoseOfASurveyWithMoreOrFewerSites) {
    const RowNumbers numbers(surveyWithNumbers({1, 1, 1, 1}));
    EXPECT_FALSE(numbers.areThoseOf(surveyWithNumbers({1, 1, 1})));
    EXPECT_FALSE(numbers.areThoseOf(surveyWithNumbers({1, 1, 1, 1, 1})));
    const RowNumbers whole(surveyWithNumbers({1, 2, 3, 4}));
    EXPECT_FALSE(whole.areThoseOf(surveyWithNumbers({1, 2, 3})));
    EXPECT_FALSE(whole.areThoseOf(surveyWithNumbers({1, 2, 3, 5})));
}

}  // namespace tessel
