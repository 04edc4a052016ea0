// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/row_numbers.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

namespace tessel {

namespace {

// Bits, because a number of a file may be one that equals nothing.
bool sameBits(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

std::size_t bytesOf(const double* from, const double* to) {
    return static_cast<std::size_t>(to - from) * sizeof(double);
}

}  // namespace

RowNumbers::RowNumbers(const Survey& survey) {
    const double* const numbers = survey.SiteData.column(kRow);
    const std::size_t most = static_cast<std::size_t>(survey.NumSites) / 2;
    for (SiteIndex first = 0; first < survey.NumSites;) {
        SiteIndex end = first;
        while (end < survey.NumSites && sameBits(numbers[end], numbers[first]))
            ++end;
        if (runs_.size() == most) {
            runs_ = std::vector<Run>();
            column_.assign(numbers, numbers + survey.NumSites);
            return;
        }
        runs_.push_back({numbers[first], end});
        first = end;
    }
    runs_.shrink_to_fit();
}

void RowNumbers::putInto(Survey& survey) const {
    double* numbers = survey.SiteData.column(kRow);
    if (!column_.empty()) std::copy(column_.begin(), column_.end(), numbers);
    SiteIndex first = 0;
    for (const Run& run : runs_) {
        numbers = std::fill_n(numbers, run.end - first, run.number);
        first = run.end;
    }
}

bool RowNumbers::areThoseOf(const Survey& survey) const {
    const double* numbers = survey.SiteData.column(kRow);
    const double* const end = numbers + survey.NumSites;
    if (!column_.empty())
        return static_cast<SiteIndex>(column_.size()) == survey.NumSites &&
               std::memcmp(column_.data(), numbers, bytesOf(numbers, end)) == 0;
    if ((runs_.empty() ? 0 : runs_.back().end) != survey.NumSites) return false;
    SiteIndex first = 0;
    for (const Run& run : runs_) {
        for (; first < run.end; ++first)
            if (!sameBits(numbers[first], run.number)) return false;
    }
    return true;
}

}  // namespace tessel
