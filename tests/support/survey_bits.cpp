// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/survey_bits.h"

namespace tessel {

namespace {

struct Part {
    std::string name;
    std::vector<double> values;
};

template <typename... Numbers>
std::vector<double> all(Numbers... numbers) {
    return {static_cast<double>(numbers)...};
}

std::vector<double> all(const FieldColumns& field) {
    return all(field.Start, field.End, field.Len);
}

std::vector<Part> partsOf(const Survey& s) {
    std::vector<Part> parts = {
        {"SiteID", s.SiteID},
        {"SourceLine", {s.SourceLine.begin(), s.SourceLine.end()}},
        {"NumSites", all(s.NumSites)},
        {"columns present", all(s.SiteIDPresent, s.TwoEMColumns)},
        {"NumRows", all(s.NumRows)},
        {"RowIndex", all(s.RowIndex)},
        {"NumPoints", {s.NumPoints.begin(), s.NumPoints.end()}},
        {"TrueDist", s.TrueDist},
        {"XDist", s.XDist},
        {"YDist", s.YDist},
        {"largest distances", all(s.MaxTrueDist, s.MaxXDist, s.MaxYDist)},
        {"extents", all(s.MaxX, s.MaxY, s.MinX, s.MinY)},
        {"parameters", all(s.EMCutoff, s.MinDistance, s.MinLineLength, s.DistanceMode)},
        {"flags", all(s.UseTrueDist, s.UseXDist, s.UseYDist, s.NegateEM, s.DivideEMBy10)},
        {"SiteID field", all(s.SiteIDField)},
        {"X field", all(s.XField)},
        {"Y field", all(s.YField)},
        {"EM1 field", all(s.EM1Field)},
        {"EM2 field", all(s.EM2Field)},
        {"totals", all(s.EMAdjustTotalA, s.EMAdjustTotalB)},
        {"applied adjustments",
         all(s.applied.em1.factor, s.applied.em1.shift, s.applied.em2.factor, s.applied.em2.shift)},
        {"coordinate system", all(s.PositionsCRS)},
        {"import", all(s.importNumber)}};
    const char* const columns[] = {"X", "Y", "EM1", "EM2", "row"};
    for (int c = 0; c < kSiteColumns; ++c)
        parts.push_back({columns[c], {s.SiteData.column(c), s.SiteData.column(c) + s.SiteData.capacity()}});
    return parts;
}

bool sameBits(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

}  // namespace

std::string differences(const Survey& a, const Survey& b) {
    std::string names;
    const std::vector<Part> ofA = partsOf(a), ofB = partsOf(b);
    for (std::size_t i = 0; i < ofA.size(); ++i)
        if (!std::ranges::equal(ofA[i].values, ofB[i].values, sameBits)) names += ofA[i].name + "; ";
    return names;
}

}  // namespace tessel
