// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

namespace tessel {

// A second, plain implementation of what happens to a survey, to compare the program with. It shares nothing
// with the program: sites are records in a list, every rule is written out as a user would tell it, and
// nothing is done for speed.

struct PlainSite {
    double x = 0, y = 0, em1 = 0, em2 = 0, id = 0;
    int row = 0;
    long line = 0;  ///< of the sensor file

    bool operator==(const PlainSite&) const = default;
};

struct PlainSurvey {
    std::vector<PlainSite> sites;
    bool ids = false, two = false;
    int rows = 0;
    int rowIndex = 0;  ///< the row counter; above 250 after too many rows
    int measure = 0;   ///< 1 true distance, 2 along X, 3 along Y
    double minDistance = 0;

    bool empty() const { return sites.empty(); }
    bool rowsUsable() const { return rows > 0 && (rowIndex <= 250 || rowIndex == rows); }
    /// The distance from site i - 1 to site i by the measure; 0 where there is none.
    double distance(std::size_t i) const;
    /// All of them, with the 0 behind the last site.
    std::vector<double> distances() const;
    /// Sites of rows 1, 2, ... at [0], [1], ...: runs of equal numbers.
    std::vector<long> rowSizes() const;
    /// Indices of the sites of a row.
    std::vector<std::size_t> sitesOfRow(int row) const;
};

/// The program's survey as a plain one.
PlainSurvey plainSurveyOf(const Survey& survey);
/// Fails the running test where the program's survey has other sites, rows, counts or distances by the
/// measure chosen.
void expectAsPlain(const Survey& survey, const PlainSurvey& plain);

/// Numbers the rows from the gaps; false when there are more than 250.
bool findPlainRows(PlainSurvey& survey);
void joinPlainRows(PlainSurvey& survey, int row1, int row2);
/// Divides the row of a site before it.
void splitPlainRow(PlainSurvey& survey, std::size_t site);
void deletePlainRow(PlainSurvey& survey, int row);
/// Takes these sites (indices) of one row out; later rows move down when it has become empty.
void deletePlainSites(PlainSurvey& survey, int row, const std::vector<std::size_t>& sites);
/// Takes points of a row out, which are counted from 1.
void deletePlainPoints(PlainSurvey& survey, int row, const std::vector<SiteIndex>& points);
/// Takes the sites marked out; row numbers stay.
void deleteMarkedPlainSites(PlainSurvey& survey, const std::vector<bool>& marks);
/// Numbers the rows that are left anew, without gaps.
void closePlainRows(PlainSurvey& survey);
/// False when the rows no longer run 1, 1, 2, ... up to `rows`; then all sites are row 1.
bool validatePlainRows(PlainSurvey& survey);

/// How a number is written: sign blank, up to 15 digits, blank.
std::string plainNumber(double value);
/// The transect file.
std::string plainTransect(const PlainSurvey& survey, bool withRows, int firstRow);

/// Whether a field is a number, and its value.
bool plainNumeric(const std::string& text, double& value);

/// First and last column of a field, 1-based; both 0 when it is not in the file.
using PlainField = std::array<int, 2>;

struct PlainTrimbleOptions {
    PlainField id{}, x{}, y{}, em1{}, em2{};
    double cutoff = -10, minDistance = 0;
    int measure = 1;
    bool negate = false, tenth = false;
};

struct PlainImport {
    PlainSurvey survey;
    long rejected = 0;
    std::string log;
    bool tooManyRows = false;
};

/// Imports the bytes of a fixed-column sensor file.
PlainImport plainTrimbleImport(const std::string& bytes, const PlainTrimbleOptions& options);

}  // namespace tessel
