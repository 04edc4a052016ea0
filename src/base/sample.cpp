// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/sample.h"

namespace tessel {

double medianOf(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double medianBesideZero(std::vector<double>& values) {
    std::erase(values, 0.0);
    return values.empty() ? 0 : medianOf(values);
}

}  // namespace tessel
