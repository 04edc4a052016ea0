// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace tessel {

/// What a line of a survey's description is.
enum class DescriptionKind {
    kWarning,  ///< what a user must know; a sentence or two
    kFact,     ///< a value
    kPath,     ///< the path of a file
    kRange,    ///< a smallest and a largest value
    kLink,     ///< opens the error log
    kLogLine   ///< a line of the error log
};

/// A line of a survey's description. Texts are UTF-8, but for paths and lines of files, which are bytes of
/// any kind and no markup.
struct DescriptionLine {
    DescriptionKind kind = DescriptionKind::kFact;
    std::string name;     ///< tells the line from the others, as a word
    std::string caption;  ///< empty where the line goes on with the one above it
    std::string text;     ///< of a range its smallest value
    std::string upTo;     ///< of a range its largest value, else empty
    std::string unit;     ///< of a range
};

/// What the main window says about the survey while no plot is shown.
struct SurveyDescription {
    std::string headline;  ///< two lines: what there is, and what can be done with it
    std::vector<DescriptionLine> lines;
};

}  // namespace tessel
