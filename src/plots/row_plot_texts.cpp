// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/row_plot_texts.h"

#include "app/survey.h"
#include "base/numbers.h"
#include "rows/row_selection.h"

namespace tessel {

std::string rowHeader(int row, std::int64_t points) {
    return "Sample Row Plot:  " + shortRowHeader(row, points);
}

std::string shortRowHeader(int row, std::int64_t points) {
    return "Row #" + std::to_string(row) + " (" + std::to_string(points) +
           (points > 1 ? " points)" : " point)");
}

std::string profileReadout(double along, double eca, bool plotByX) {
    return (plotByX ? "UTM X = " : "UTM Y = ") + pictureFormat(along, 2) + ", ECa = " + pictureFormat(eca, 2);
}

std::string mapReadout(double along, double across, bool plotByX) {
    return (plotByX ? "UTM X = " : "UTM Y = ") + pictureFormat(along, 2) +
           (plotByX ? ", UTM Y = " : ", UTM X = ") + pictureFormat(across, 2);
}

std::string tooManyInBox(std::int64_t sites) {
    return std::to_string(sites) + " sites are in the box, and no more than " +
           std::to_string(RowSelection::kMost) +
           " can be selected at a time. The map or the search for suspicious sites takes more.";
}

std::string otherDeselected(bool plotByX) {
    return std::string("Another site with the same ") + (plotByX ? "X" : "Y") +
           " was deselected instead: sites with the same coordinate along the row count as one.";
}

const char* coordinateTitle(int column) {
    return column == kX ? "X (meters)" : "Y (meters)";
}

}  // namespace tessel
