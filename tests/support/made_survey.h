// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/difference.h"

namespace tessel {

/// A site of a survey made up for a test.
struct MadeSite {
    double x = 0, y = 0, em1 = 0, em2 = 0, row = 1;
    double id = 0;

    bool operator==(const MadeSite&) const = default;
};

/// A survey of these sites, with room for a few more, two readings and site IDs; true distances chosen and
/// calculated. NumRows, RowIndex and NumPoints are those of the row column, which must be in order.
Survey surveyWithRows(const std::vector<MadeSite>& sites);
/// The same with a minimum distance of 20 m and site IDs 1001, 1002, ...
Survey madeSurvey(std::vector<MadeSite> sites);

/// The same with one row of sites at these places.
Survey surveyAt(const std::vector<std::pair<double, double>>& places);
/// The same with sites of these numbers in the row column, in order or not, and so many rows counted.
Survey surveyOfRowNumbers(const std::vector<double>& numbers, int rows);
/// A site a metre on rows along Y, 6 m apart, walked to and fro without a stop; all in row 1.
Survey surveyWalkedToAndFro(int rows, double length = 40);

/// Two rows of three sites 10 m apart along X, 40 m between the rows, with a minimum distance of 20 m.
Survey surveyOfTwoRows();

/// Sites along X, the next one `gaps[i]` further on than site i; row column 0.
Survey surveyAlongX(const std::vector<double>& gaps, double minDistance);
/// Rows of one to `largestRow` sites, coordinates and readings at random, some sites at one place.
Survey randomRows(std::mt19937& random, int rows, int largestRow);

/// One row at X = 0, 1, 2, ... and Y = 0 with these readings and nothing calculated; one reading a site, or
/// two of equally many sites.
Survey surveyOfReadings(const std::vector<double>& em1);
Survey surveyOfReadings(const std::vector<double>& em1, const std::vector<double>& em2);
/// The same with readings that are functions of the site's index.
Survey surveyOfReadings(SiteIndex sites, const std::function<double(SiteIndex)>& em1,
                        const std::function<double(SiteIndex)>& em2);

// Surveys whose statistics are known exactly: readings that repeat; readings around zero; readings whose
// variation is a hundred-millionth of their size.
Survey surveyWithTies();
Survey surveyAroundZero();
Survey surveyWithLargeOffset();

/// The sites of a survey, and the readings of a column, to be changed literally and compared.
std::vector<MadeSite> sitesIn(const Survey& survey);
std::vector<double> readingsOf(const Survey& survey, SiteColumn column);
/// SourceLine of the sites; of a survey made here 1, 3, 5, ...
std::vector<std::uint32_t> linesIn(const Survey& survey);

/// Fails the running test where two surveys differ in anything but the storage behind the last site: sites,
/// IDs, rows, counts, distances and the measure chosen.
void expectSameSurvey(const Survey& actual, const Survey& expected);
/// The same after what was done is taken back, twice, and after it is done again, also by an act kept apart.
void expectThereAndBack(Survey& survey, const Survey& before, Difference& difference);

}  // namespace tessel
