// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "base/geometry.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tessel {

// The least code that does the work of a job without the program: what a job is measured against.

/// Columns in memory that nobody has filled.
struct BareTable {
    static constexpr int kColumns = 5;
    std::unique_ptr<double[]> columns[kColumns];
    std::size_t sites = 0;
};

/// Maps the file, finds line ends with memchr, converts five fixed fields with std::from_chars, stores them.
/// Lines with a field that is no number are passed over.
BareTable bareFixedColumnImport(const std::string& path);
/// The same for five fields separated by commas, then one pass of distances.
BareTable bareCommaImport(const std::string& path);

/// One pass of distances and row numbers. The arrays must be as long as the survey.
double bareDistancesAndRows(const Survey& survey, double* distances, double* rows);

/// Formats five fields a site with std::to_chars in its shortest form into zones of 14 characters and writes
/// the file with write().
void bareExport(const Survey& survey, const std::string& path);

/// Longitudes and latitudes of all sites through PROJ's own loop into copies, given the EPSG number of the
/// system to which they go; gives the last easting.
double bareConversion(const Survey& survey, int system);

/// Inserts position, readings, row, site ID and line of every site into a table of SQLite, in one transaction
/// by one statement, and syncs the file; and selects them all again. The survey has two readings, IDs and
/// lines.
void bareSave(const Survey& survey, const std::string& path);
double bareOpen(const std::string& path);

/// Points to pixels: a block of `dot` pixels in one colour for each site that is not masked.
struct BarePicture {
    int width, height;
    std::vector<std::uint32_t> pixels;
    BarePicture(int w, int h)
        : width(w), height(h), pixels(static_cast<std::size_t>(w) * static_cast<std::size_t>(h)) {}
};
void barePoints(BarePicture& picture, const Survey& survey, const std::uint8_t* mask, int dot);
/// The same with a disc of five pixels (a block without its corners) and one colour for each row number.
void bareDiscs(BarePicture& picture, const Survey& survey);
/// And with one of 256 colours for each reading of EM1 between the lowest and the highest.
void bareDiscsByReading(BarePicture& picture, const Survey& survey);
/// A line through all distances: for each pixel column the lowest and the highest are kept, then drawn.
void bareLine(BarePicture& picture, std::span<const double> values, double top);

/// Marks the sites inside a rectangle in survey units and counts the marks.
SiteIndex bareMask(const Survey& survey, std::uint8_t* mask, double west, double south, double east,
                   double north);

/// Moves every column of the table by one site: one pass over the table, reading and writing.
void bareTablePass(Survey& survey);

/// Takes sites out of every column, given their runs, with the distances that they leave behind and the sites
/// of each row counted anew; no row loses its last site. Nothing is kept of them.
void bareDeletion(Survey& survey, const std::vector<IndexRange>& runs);
/// Opens the gaps of these runs, of which the first is not at the beginning, in every column, from the last
/// to the first, and puts the site in front of each there, with distances and sites of each row counted anew.
/// Requires the room of `field`.
void bareInsertion(Survey& survey, const std::vector<IndexRange>& runs, const Survey& field);
/// Adds a constant to every reading of EM1, if all of them stay finite.
bool bareAddition(Survey& survey, double constant);

/// One pass of headings between neighbours: the sites at which the way turns by more than a right angle.
SiteIndex bareTurns(const Survey& survey);

/// Sites whose EM1 or EM2 is more than four scaled median absolute deviations away from the median of those
/// five sites before and behind it, or of all within `radius` metres, which are found in the squares of a
/// grid over the survey. Requires a survey without far positions.
SiteIndex bareSuspects(const Survey& survey, double radius);

/// Sum, sum of squares, minimum and maximum in two passes, then counts of 50 bins in a third.
struct BareHistogram {
    double mean = 0, squares = 0, minimum = 0, maximum = 0;
    std::int64_t bins[50] = {};
};
BareHistogram bareHistogram(const double* readings, SiteIndex sites);

}  // namespace tessel
