// SPDX-License-Identifier: GPL-3.0-or-later
// Lines from which values are missing: each is the right site or a line of the log, in every layout, wherever
// the gap is and however many there are.
#include "import/generic_file.h"

namespace tessel {

namespace {

using Values = std::vector<std::string>;

class MissingValues : public GenericFile, public testing::WithParamInterface<std::size_t> {
  protected:
    MissingValues() { options.layout = kGenericLayouts[GetParam()]; }

    std::size_t columns() const { return static_cast<std::size_t>(options.layout.columns()); }

    // A whole record; every value of a file is another one, so that none can stand in for its neighbour.
    Values record(int line) const {
        Values values;
        for (std::size_t column = 0; column < columns(); ++column)
            values.push_back(std::to_string(1 + line * 10 + static_cast<int>(column)));
        if (options.layout.rowNumber) values.back() = "1";
        return values;
    }

    static std::string joined(const Values& values, const std::string& separator) {
        std::string line;
        for (const std::string& value : values)
            line += value + separator;
        return line.substr(0, line.size() - separator.size());
    }

    std::set<std::int64_t> loggedLines() const {
        std::istringstream lines(log());
        std::set<std::int64_t> numbers;
        for (std::string line; std::getline(lines, line);)
            EXPECT_TRUE(numbers.insert(std::stoll(line.substr(line.find('#') + 1))).second) << line;
        return numbers;
    }

    void expectSite(const Survey& survey, SiteIndex site, const Values& values) const {
        const std::size_t x = options.layout.siteNumber ? 1 : 0;
        if (options.layout.siteNumber) {
            EXPECT_EQ(survey.SiteID[static_cast<std::size_t>(site)], std::stod(values[0]));
        }
        EXPECT_EQ(survey.SiteData(kX, site), std::stod(values[x]));
        EXPECT_EQ(survey.SiteData(kY, site), std::stod(values[x + 1]));
        EXPECT_EQ(survey.SiteData(kEM1, site), std::stod(values[x + 2]));
        if (options.layout.secondReading) {
            EXPECT_EQ(survey.SiteData(kEM2, site), std::stod(values[x + 3]));
        }
    }

    // Reads the lines, in which an empty text is a missing value, and checks what became of each.
    void expectEachLineToBeASiteOrLogged(const std::vector<Values>& lines, const std::string& separator,
                                         const std::string& lineEnd) {
        std::string bytes;
        for (const Values& values : lines)
            bytes += joined(values, separator) + lineEnd;
        const ImportResult result = import(bytes);
        const std::set<std::int64_t> logged = loggedLines();
        SiteIndex site = 0;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const bool whole = std::find(lines[i].begin(), lines[i].end(), "") == lines[i].end();
            ASSERT_EQ(logged.contains(static_cast<std::int64_t>(i + 1)), !whole) << bytes;
            if (!whole) continue;
            ASSERT_LT(site, result.survey.NumSites) << bytes;
            EXPECT_EQ(result.survey.SourceLine[static_cast<std::size_t>(site)], i + 1);
            expectSite(result.survey, site++, lines[i]);
        }
        ASSERT_EQ(site, result.survey.NumSites) << bytes;
        EXPECT_EQ(result.summary.linesNotFitting, 0) << bytes;
    }
};

}  // namespace

TEST_P(MissingValues, CostTheirRecordWhereverTheGapIs) {
    for (std::size_t first = 0; first < columns(); ++first)
        for (std::size_t last = first; last < columns(); ++last) {
            std::vector<Values> lines = {record(0), record(1), record(2)};
            for (std::size_t column = first; column <= last; ++column)
                lines[1][column].clear();
            expectEachLineToBeASiteOrLogged(lines, ",", "\n");
        }
}

TEST_P(MissingValues, CostTheirRecordsWhenManyLinesInARowLackThem) {
    for (std::size_t gap = 0; gap < columns(); ++gap)
        for (int run = 1; run <= 5; ++run) {
            std::vector<Values> lines;
            for (int line = 0; line < run + 2; ++line) {
                lines.push_back(record(line));
                if (line > 0 && line <= run) lines.back()[gap].clear();
            }
            expectEachLineToBeASiteOrLogged(lines, ",", "\r\n");
        }
}

TEST_P(MissingValues, OfRandomFieldsCostNoNeighbour) {
    std::mt19937 random(static_cast<unsigned>(GetParam() + 1));
    for (int round = 0; round < 8; ++round) {
        std::vector<Values> lines;
        const auto share = 2 + random() % 12;
        for (int line = 0; line < 250; ++line) {
            lines.push_back(record(line));
            for (std::string& value : lines.back())
                if (random() % share == 0) value.clear();
        }
        const bool decimalCommas = options.decimalCommas = random() % 4 == 0;
        const std::string separator = decimalCommas ? ";" : random() % 3 == 0 ? " , " : ",";
        const std::string lineEnd = random() % 3 == 0 ? separator + "\n" : "\n";
        expectEachLineToBeASiteOrLogged(lines, separator, lineEnd);
    }
}

INSTANTIATE_TEST_SUITE_P(InEachLayout, MissingValues, testing::Range<std::size_t>(0, 8));

}  // namespace tessel
