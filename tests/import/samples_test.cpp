// SPDX-License-Identifier: GPL-3.0-or-later
// The field of a logger that never stopped holds what samples/README.md says of it.
#include "analysis/suspicious_sites.h"
#include "import/table_reader.h"
#include "import/table_shape.h"
#include "import/trimble_reader.h"
#include "rows/row_turns.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

const std::string kSamples = TESSEL_SOURCE_DIR "/samples/";

class FieldWithoutStops : public testing::Test {
  protected:
    ImportResult imported() const {
        TrimbleOptions options;
        options.path = kSamples + "field_without_stops.dat";
        options.errorLogPath = folder / "error_log.dat";
        options.SiteIDPresent = options.TwoEMColumns = true;
        options.EMCutoff = -10;
        options.MinDistance = 10;
        options.SiteIDField = {1, 8, 8};
        options.XField = {10, 21, 12};
        options.YField = {23, 34, 12};
        options.EM1Field = {36, 43, 8};
        options.EM2Field = {45, 52, 8};
        return importTrimbleFile(options);
    }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(FieldWithoutStops, HasTheSitesThatItsDescriptionCounts) {
    const ImportResult import = imported();
    EXPECT_EQ(import.survey.NumSites, 4374);
    EXPECT_EQ(import.rejected, 1);
    ASSERT_EQ(import.summary.rejected.size(), 1U);
    EXPECT_EQ(import.summary.rejected[0].firstLine, 1711);
    SuspectParameters rules = proposedSuspectParameters(import.survey);
    rules.uses[kFarAway] = rules.uses[kRepeatedPlace] = rules.uses[kSpike] = true;
    const Suspects found = findSuspects(import.survey, rules);
    EXPECT_EQ(found.counts[kFarAway], 12);
    const auto isFlagged = [&](std::uint32_t line, SuspectRule rule) {
        const auto& lines = import.survey.SourceLine;
        const auto site = std::find(lines.begin(), lines.end(), line) - lines.begin();
        return (found.flags[static_cast<std::size_t>(site)] >> rule & 1) != 0;
    };
    for (const std::uint32_t lost : {656U, 1954U, 3151U})
        EXPECT_TRUE(isFlagged(lost, kFarAway)) << lost;
    EXPECT_EQ(found.counts[kRepeatedPlace] - (12 - 3), 65) << "lost fixes repeat themselves too";
    for (const std::uint32_t metal : {358U, 2940U, 3832U})
        EXPECT_TRUE(isFlagged(metal, kSpike)) << metal;
}

TEST_F(FieldWithoutStops, HasTwentyFourRows) {
    const Survey survey = imported().survey;
    const RowTurns found = findRowTurns(survey, proposedTurnParameters(survey));
    EXPECT_EQ(found.rows, 24);
    EXPECT_GT(found.shortest, 165);
    EXPECT_LT(found.longest, 180);
}

TEST_F(FieldWithoutStops, IsTheSameDriveInDegrees) {
    const Survey metres = imported().survey;
    TableOptions options;
    options.path = kSamples + "field_in_degrees.csv";
    options.errorLogPath = folder / "error_log.dat";
    options.shape.separator = ',';
    options.shape.linesToSkip = 1;
    options.roles = {TableRole::kSite, TableRole::kLongitude, TableRole::kLatitude, TableRole::kEM1,
                     TableRole::kEM2};
    options.EMCutoff = -10;
    options.MinDistance = 10;
    const ImportResult table = importTable(options);
    ASSERT_EQ(table.survey.NumSites, metres.NumSites);
    EXPECT_EQ(table.survey.PositionsCRS, 32614);
    for (SiteIndex i = 0; i < metres.NumSites; ++i) {
        ASSERT_EQ(table.survey.SiteID[static_cast<std::size_t>(i)],
                  metres.SiteID[static_cast<std::size_t>(i)]);
        ASSERT_EQ(table.survey.SiteData(kEM1, i), metres.SiteData(kEM1, i));
    }
    const double east = table.survey.SiteData(kX, 100) - table.survey.SiteData(kX, 0);
    EXPECT_NEAR(east, metres.SiteData(kX, 100) - metres.SiteData(kX, 0), 1.5)
        << "on a sphere, of another grid";
}

}  // namespace tessel
