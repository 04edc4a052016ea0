// SPDX-License-Identifier: GPL-3.0-or-later
#include "geodesy/position_conversion.h"

#include "geodesy/coordinate_systems.h"
#include "rows/row_detection.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessel {

namespace {

constexpr std::size_t kFirstBad = 5;
constexpr double kNowhere = std::numeric_limits<double>::infinity();

// The columns of a survey read as degrees.
class DegreeReader {
  public:
    DegreeReader(const Survey& survey, const PositionRequest& request)
        : longitude_(survey.SiteData.column(request.latitudeFirst ? kY : kX)),
          latitude_(survey.SiteData.column(request.latitudeFirst ? kX : kY)),
          minutes_(request.kind == PositionKind::kDegreesMinutes) {}

    GeographicPosition at(SiteIndex site) const {
        if (!minutes_) return {longitude_[site], latitude_[site]};
        return {degreesFromMinutes(longitude_[site]), degreesFromMinutes(latitude_[site])};
    }

  private:
    const double* longitude_;
    const double* latitude_;
    bool minutes_;
};

double middleOf(std::vector<double>& values) {
    const auto middle = values.begin() + std::ssize(values) / 2;
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

std::string counted(SiteIndex count, const std::string& noun) {
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

// What will not be converted is sent nowhere, from where it does not come back.
void readDegrees(const Survey& survey, ConvertedPositions& positions) {
    const DegreeReader degrees(survey, positions.request);
    double* const x = positions.x.data();
    double* const y = positions.y.data();
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        const GeographicPosition at = degrees.at(i);
        const bool good = isOnEarth(at) && !isMissingFix(at);
        x[i] = good ? at.longitude : kNowhere;
        y[i] = good ? at.latitude : kNowhere;
    }
}

SiteIndex keepWhatFailed(const Survey& survey, ConvertedPositions& positions) {
    const double* const oldX = survey.SiteData.column(kX);
    const double* const oldY = survey.SiteData.column(kY);
    double* const x = positions.x.data();
    double* const y = positions.y.data();
    SiteIndex kept = 0;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        if (std::isfinite(x[i]) && std::isfinite(y[i])) continue;
        x[i] = oldX[i];
        y[i] = oldY[i];
        ++kept;
    }
    return kept;
}

const char* inWords(PositionKind kind) {
    return kind == PositionKind::kDegreesMinutes ? "degrees and decimal minutes" : "degrees";
}

// All of them are about other positions now.
void forgetDistances(Survey& survey) {
    for (std::vector<double>* distances : {&survey.TrueDist, &survey.XDist, &survey.YDist})
        distances->clear();
    survey.MaxTrueDist = survey.MaxXDist = survey.MaxYDist = 0;
}

}  // namespace

PositionCheck checkPositions(const Survey& survey, const PositionRequest& request) {
    const DegreeReader degrees(survey, request);
    PositionCheck check;
    std::vector<double> longitudes, latitudes;
    longitudes.reserve(static_cast<std::size_t>(survey.NumSites));
    latitudes.reserve(static_cast<std::size_t>(survey.NumSites));
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        const GeographicPosition at = degrees.at(i);
        if (isOnEarth(at) && !isMissingFix(at)) {
            longitudes.push_back(at.longitude);
            latitudes.push_back(at.latitude);
            continue;
        }
        ++(isMissingFix(at) ? check.missing : check.outOfRange);
        if (check.firstBad.size() < kFirstBad) check.firstBad.push_back(i);
    }
    check.positions = std::ssize(longitudes);
    if (check.positions > 0) check.middle = {middleOf(longitudes), middleOf(latitudes)};
    return check;
}

std::string badPositionsInWords(const Survey& survey, const PositionCheck& check) {
    const SiteIndex bad = check.outOfRange + check.missing;
    if (bad == 0) return {};
    std::string text = counted(bad, "position") + (bad == 1 ? " stays as it is" : " stay as they are") + ": ";
    if (check.outOfRange > 0) text += std::to_string(check.outOfRange) + " out of range";
    if (check.missing > 0)
        text += (check.outOfRange > 0 ? ", " : "") + std::to_string(check.missing) + " at 0, 0";
    const bool hasLines = !survey.SourceLine.empty();
    text += hasLines ? " (line " : " (site ";
    for (std::size_t i = 0; i < check.firstBad.size(); ++i) {
        const auto site = static_cast<std::size_t>(check.firstBad[i]);
        text += (i > 0 ? ", " : "") + std::to_string(hasLines ? survey.SourceLine[site] : site + 1);
    }
    return text + (static_cast<SiteIndex>(check.firstBad.size()) < bad ? ", ...)." : ").");
}

ConvertedPositions convertedPositions(const Survey& survey, const PositionRequest& request) {
    ConvertedPositions positions{request, {}, {}, 0};
    if (!request.converts()) return positions;
    const Transformation way(request.system);
    positions.x.resize(static_cast<std::size_t>(survey.SiteData.capacity()));
    positions.y.resize(static_cast<std::size_t>(survey.SiteData.capacity()));
    readDegrees(survey, positions);
    way.toMetres(positions.x.data(), positions.y.data(), static_cast<std::size_t>(survey.NumSites));
    positions.kept = keepWhatFailed(survey, positions);
    return positions;
}

bool changesSurvey(const Survey& survey, const PositionRequest& request) {
    return request.converts() ||
           survey.PositionsCRS != (request.kind == PositionKind::kCRS ? request.system : 0);
}

Difference replacePositions(Survey& survey, ConvertedPositions positions) {
    if (!positions.request.converts()) {
        Difference difference(survey);
        survey.PositionsCRS = positions.request.kind == PositionKind::kCRS ? positions.request.system : 0;
        return difference;
    }
    Reserve_Chosen_Distance(survey);
    Difference difference(survey);
    difference.keepAllDistances(survey);
    difference.exchangeColumn(survey, kX, std::move(positions.x));
    difference.exchangeColumn(survey, kY, std::move(positions.y));
    survey.PositionsCRS = positions.request.system;
    forgetDistances(survey);
    Calculate_Chosen_Distance(survey);
    return difference;
}

ActDescription describe(const ConvertedPositions& positions) {
    const PositionRequest& request = positions.request;
    if (request.kind == PositionKind::kGrid)
        return {ActKind::kConvert,
                "name no coordinate system",
                "Said that positions are in a grid without a name",
                {{"to", "grid without a name"}}};
    const std::string name = shownName(request.system);
    if (!request.converts())
        return {ActKind::kConvert,
                "name the coordinate system",
                "Said that positions are in " + name,
                {{"to", name}}};
    ActDescription act{ActKind::kConvert,
                       "convert the positions",
                       std::string("Converted positions from ") + inWords(request.kind) + " to " + name,
                       {{"from", inWords(request.kind)},
                        {"X was", request.latitudeFirst ? "latitude" : "longitude"},
                        {"to", name},
                        {"kept as they were", std::to_string(positions.kept)}}};
    if (positions.kept > 0) act.words += ", " + counted(positions.kept, "position") + " kept as they were";
    return act;
}

}  // namespace tessel
