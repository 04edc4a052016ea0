// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/applied_adjustments.h"

#include <array>
#include <charconv>
#include <cmath>

namespace tessel {

namespace {

// As few digits as say it; rounding far behind the point is not the user's.
std::string shortNumber(double value) {
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, 12).ptr;
    return {text.data(), end};
}

void append(std::string& text, const char* between, const std::string& more) {
    if (!text.empty()) text += between;
    text += more;
}

void appendStep(std::string& text, const std::string& column, const AppliedAdjustment& step) {
    if (step.factor != 1)
        append(text, " ",
               "Every " + column + " reading has been multiplied by " + shortNumber(step.factor) + '.');
    else if (step.shift != 0)
        append(text, " ", shortNumber(step.shift) + " has been added to every " + column + " reading.");
}

std::string totalOf(const AppliedAdjustment& applied) {
    if (applied == AppliedAdjustment{}) return " unchanged";
    std::string text;
    if (applied.factor != 1) text += " x " + shortNumber(applied.factor);
    if (applied.shift != 0)
        text += (applied.shift < 0 ? " - " : " + ") + shortNumber(std::abs(applied.shift));
    return text;
}

}  // namespace

std::string stepText(const AppliedAdjustments& step) {
    std::string text;
    appendStep(text, "EM1", step.em1);
    appendStep(text, "EM2", step.em2);
    return text;
}

std::string totalsText(const AppliedAdjustments& applied, bool two) {
    std::string text = "Since the import: EM1" + totalOf(applied.em1);
    if (two) text += ", EM2" + totalOf(applied.em2);
    return text;
}

}  // namespace tessel
