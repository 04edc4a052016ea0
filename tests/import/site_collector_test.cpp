// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/site_collector.h"

#include "import/error_log.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

class SiteCollectorTest : public FolderTest {
  protected:
    // A site on each of these lines of a part that has so many.
    static FoundSites partWith(const std::vector<std::int64_t>& lines, std::int64_t linesRead) {
        FoundSites found(FileColumns{});
        for (const std::int64_t line : lines) {
            for (const SiteColumn column : {kX, kY, kEM1})
                found.next(column) = static_cast<double>(line);
            found.addSite(line);
        }
        found.linesRead = linesRead;
        return found;
    }

    static LeftValues xAndY(std::optional<double> x, std::optional<double> y) {
        LeftValues values;
        values.columns[kX] = x;
        values.columns[kY] = y;
        return values;
    }

    Survey survey;
    ErrorLog log{path};
    SiteCollector sites{survey, log, 1000};
};

}  // namespace

TEST_F(SiteCollectorTest, PutsPartsOneBehindTheOther) {
    sites.add(partWith({2, 3}, 5));
    sites.add(partWith({}, 10));
    sites.add(partWith({1}, 1));
    sites.finish(survey.NumSites);
    EXPECT_EQ(survey.SourceLine, (std::vector<std::uint32_t>{2, 3, 16}));
    EXPECT_EQ(survey.SiteData(kX, 2), 1);
    EXPECT_EQ(survey.NumSites, 3);
    EXPECT_EQ(sites.linesRead(), 16);
}

TEST_F(SiteCollectorTest, CountsARecordThatBeginsAboveItsPartThere) {
    sites.add(partWith({}, 10));
    sites.add(partWith({-3, 1}, 2));
    EXPECT_EQ(survey.SourceLine, (std::vector<std::uint32_t>{7, 11}));
}

TEST_F(SiteCollectorTest, GivesSitesBehindTheLastLineThatCanBeCountedNone) {
    sites.add(partWith({1}, 4'294'967'293));
    sites.add(partWith({-1, 1, 2, 3}, 3));
    sites.add(partWith({1}, 1));
    EXPECT_EQ(survey.SourceLine,
              (std::vector<std::uint32_t>{1, 4'294'967'292, 4'294'967'294, 4'294'967'295, 0, 0}));
}

TEST_F(SiteCollectorTest, GivesSitesWithNumbersOfTheirOwnThatAreTooLargeNone) {
    sites.add(partWith({5'000'000'000}, 0));
    sites.add(partWith({7}, 0));
    EXPECT_EQ(survey.SourceLine, (std::vector<std::uint32_t>{0, 7}));
}

TEST_F(SiteCollectorTest, TellsOddAndRejectedLinesAsTheFileCountsThem) {
    FoundSites found = partWith({}, 7);
    sites.add(found);
    found.texts = "a bad line";
    found.reject(2, found.texts.substr(2, 3), "  -> so");
    found.odd.add(4);
    found.odd.add(5);
    sites.add(found);
    sites.add(found);
    log.commit();
    EXPECT_EQ(readFile(path), "Line # 9 bad  -> so\r\nLine # 16 bad  -> so\r\n");
    EXPECT_EQ(sites.rejected(), 2);
    EXPECT_EQ(sites.odd().lines, 4);
    EXPECT_EQ(sites.odd().first, 11);
}

TEST_F(SiteCollectorTest, KeepsBehindTheLastSiteWhatLaterLinesHaveLeft) {
    FoundSites found = partWith({1}, 3);
    found.leave(xAndY(1.0, 2.0));
    sites.add(found);
    found = partWith({}, 1);
    found.leave(xAndY({}, 3.0));
    sites.add(found);
    sites.finish(3);
    EXPECT_EQ(survey.SiteData(kX, 1), 1);
    EXPECT_EQ(survey.SiteData(kY, 1), 3);
    EXPECT_EQ(survey.SiteData(kEM1, 1), 0);
    EXPECT_EQ(survey.SiteData(kX, 2), 0);
}

TEST_F(SiteCollectorTest, ForgetsWhatWasLeftBeforeAnotherSite) {
    FoundSites found(FileColumns{});
    found.leave(xAndY(1.0, 2.0));
    sites.add(found);
    sites.add(partWith({1}, 1));
    sites.finish(2);
    EXPECT_EQ(survey.SiteData(kX, 1), 0);
    EXPECT_EQ(survey.SiteData(kY, 1), 0);
}

}  // namespace tessel
