// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/survey_fingerprint.h"

#include <array>
#include <bit>
#include <span>

namespace tessel {

namespace {

// Odd, so that no bit of a value is lost; its bits are those of the golden ratio.
constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;

std::uint64_t mixed(std::uint64_t mark, std::uint64_t value) {
    return std::rotl((mark ^ value) * kFactor, 29);
}

// Several marks, because each waits for its own last multiplication only.
std::uint64_t mixed(std::uint64_t mark, std::span<const double> values) {
    constexpr std::size_t kLanes = 8;
    std::array<std::uint64_t, kLanes> marks{1, 2, 3, 4, 5, 6, 7, 8};
    std::size_t i = 0;
    for (; i + kLanes <= values.size(); i += kLanes)
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            marks[lane] = mixed(marks[lane], std::bit_cast<std::uint64_t>(values[i + lane]));
    for (; i < values.size(); ++i)
        marks[0] = mixed(marks[0], std::bit_cast<std::uint64_t>(values[i]));
    for (const std::uint64_t one : marks)
        mark = mixed(mark, one);
    return mark;
}

}  // namespace

std::uint64_t surveyFingerprint(const Survey& survey) {
    const auto sites = static_cast<std::size_t>(survey.NumSites);
    std::uint64_t mark = mixed(kFactor, sites);
    for (const int column : {kX, kY, kEM1, kRow})
        mark = mixed(mark, {survey.SiteData.column(column), sites});
    if (survey.TwoEMColumns) mark = mixed(mark, {survey.SiteData.column(kEM2), sites});
    if (survey.SiteIDPresent) mark = mixed(mark, {survey.SiteID.data(), sites});
    return mark;
}

}  // namespace tessel
