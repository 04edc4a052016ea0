// SPDX-License-Identifier: GPL-3.0-or-later
#include "journeys/monkey/odd_surveys.h"

#include "rows/row_editing.h"

namespace tessel {

namespace {

struct Shape {
    int rows, sitesInRow;
    double corner, step, gap;  // metres or degrees
    double reading, spread;    // mS/m
    bool twoReadings, numbers;
};

constexpr std::array<Shape, kOddSurveys> kShapes = {{
    {1, 1, 0, 1, 10, 30, 0, true, true},                // one site
    {1, 2, 5, 0, 0, 30, 0, false, false},               // two at one place
    {1, 40, 100, 2, 10, 30, 9, true, false},            // one row
    {6, 15, 700, 2, 10, 30, 0, true, true},             // one reading throughout
    {260, 2, 0, 1, 9, 25, 4, false, false},             // too many rows
    {250, 3, 0, 1, 9, 25, 4, true, true},               // as many as the system holds
    {8, 20, 16.37, 1e-5, 1e-4, 28, 7, true, false},     // degrees
    {5, 12, 1e15, 1e12, 1e13, -4e8, 3e8, false, true},  // huge
    {2, 2, -1e300, 1e299, 9e299, 30, 5, true, false},   // too far apart for a distance
    {12, 1, 50, 1, 10, 0, 5, true, false},              // rows of one site
    {9, 30, 431000, 1.5, 12, 33, 20, true, true},       // an ordinary field
}};

void setSite(Survey& survey, SiteIndex site, const Shape& shape) {
    const auto row = static_cast<double>(site / shape.sitesInRow);
    const auto place = static_cast<double>(site % shape.sitesInRow);
    const auto number = static_cast<double>(site);
    survey.SiteData(kX, site) = shape.corner + place * shape.step;
    survey.SiteData(kY, site) = shape.corner + row * shape.gap;
    survey.SiteData(kEM1, site) = shape.reading + shape.spread * std::sin(number);
    if (shape.twoReadings)
        survey.SiteData(kEM2, site) = shape.reading / 2 + shape.spread * std::cos(number * 2);
    if (shape.numbers) survey.SiteID[static_cast<std::size_t>(site)] = 1000 + number;
}

}  // namespace

Survey oddSurvey(int number) {
    const Shape& shape = kShapes.at(static_cast<std::size_t>(number));
    Survey survey;
    survey.NumSites = shape.rows * shape.sitesInRow;
    survey.SiteData.resize(survey.NumSites + number % 3);
    survey.TwoEMColumns = shape.twoReadings;
    survey.SiteIDPresent = shape.numbers;
    if (shape.numbers) survey.SiteID.resize(static_cast<std::size_t>(survey.SiteData.capacity()));
    for (SiteIndex site = 0; site < survey.NumSites; ++site)
        setSite(survey, site, shape);
    Recalculate_Rows(survey, 1, shape.gap / 2);
    return survey;
}

std::string delimitedFile(const Survey& survey) {
    std::ostringstream text;
    text.precision(17);
    for (SiteIndex site = 0; site < survey.NumSites; ++site) {
        text << survey.SiteData(kX, site) << ',' << survey.SiteData(kY, site) << ','
             << survey.SiteData(kEM1, site);
        if (survey.TwoEMColumns) text << ',' << survey.SiteData(kEM2, site);
        text << '\n';
    }
    return text.str();
}

}  // namespace tessel
