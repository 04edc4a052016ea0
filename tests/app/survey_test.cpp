// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/survey.h"

#include "base/session.h"
#include "journal/journal.h"

namespace tessel {

TEST(SiteTable, KeepsItsContentsAsItGrows) {
    SiteTable table;
    table.resize(100);
    for (int column = 0; column < kSiteColumns; ++column)
        for (SiteIndex site = 0; site < 100; ++site)
            table(column, site) = 1000.0 * column + static_cast<double>(site);
    table.resize(200);
    EXPECT_EQ(table.capacity(), 200);
    for (int column = 0; column < kSiteColumns; ++column) {
        for (SiteIndex site = 0; site < 100; ++site)
            ASSERT_EQ(table(column, site), 1000.0 * column + static_cast<double>(site));
        for (SiteIndex site = 100; site < 200; ++site)
            ASSERT_EQ(table(column, site), 0);
    }
}

TEST(SiteTable, HoldsEachColumnInOnePiece) {
    SiteTable table;
    table.resize(10);
    table(kEM2, 7) = 5;
    EXPECT_EQ(table.column(kEM2)[7], 5);
    EXPECT_EQ(&table(kRow, 9) - &table(kRow, 0), 9);
}

TEST(SiteTable, GrowsInSmallStepsWithoutMovingEachTime) {
    SiteTable table;
    int moves = 0;
    const double* where = nullptr;
    for (SiteIndex capacity = 100; capacity <= 1'000'000; capacity += 100) {
        table.resize(capacity);
        moves += table.column(kX) != where ? 1 : 0;
        where = table.column(kX);
    }
    EXPECT_LT(moves, 40);
}

TEST(NewSurvey, IsEmpty) {
    const Survey survey;
    EXPECT_EQ(survey.NumSites, 0);
    EXPECT_EQ(survey.NumRows, 0);
    EXPECT_EQ(survey.RowIndex, 0);
    EXPECT_EQ(survey.SiteData.capacity(), 0);
    EXPECT_EQ(survey.MinLineLength, 1);
    EXPECT_FALSE(survey.UseTrueDist || survey.UseXDist || survey.UseYDist);
    EXPECT_EQ(survey.EMAdjustTotalA, 0);
    EXPECT_EQ(survey.EMAdjustTotalB, 0);
}

TEST(NewSession, HasSavedNothingAndPrintsAt300Dpi) {
    const Session session;
    EXPECT_FALSE(session.DataSaved);
    EXPECT_EQ(session.PrintScale, 1.0);
}

TEST(ChoosingADistance, SetsTheModeAndExactlyOneFlag) {
    Survey survey;
    for (const int mode : {2, 1, 3, 1}) {
        survey.chooseDistance(mode);
        EXPECT_EQ(survey.DistanceMode, mode);
        EXPECT_EQ(survey.UseTrueDist, mode == 1);
        EXPECT_EQ(survey.UseXDist, mode == 2);
        EXPECT_EQ(survey.UseYDist, mode == 3);
    }
}

TEST(TheSurvey, IsOneForTheWholeProcess) {
    EXPECT_EQ(&theSurvey(), &theSurvey());
    EXPECT_EQ(&theSession(), &theSession());
}

TEST(SourceLines, OfAFileLongerThanFourBytesCanCountAreUnknown) {
    EXPECT_EQ(sourceLine(1), 1U);
    EXPECT_EQ(sourceLine(4'294'967'295), 4'294'967'295U);
    EXPECT_EQ(sourceLine(4'294'967'296), 0U);
}

}  // namespace tessel
