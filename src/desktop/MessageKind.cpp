// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/MessageKind.h"

#include <QString>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr std::array kInformation = {"There are "_L1,
                                     "All masked sites have been "_L1,
                                     "Output data saved to "_L1,
                                     "A generic signal data file must satisfy "_L1,
                                     "Note: "_L1,
                                     "The printer resolution "_L1};

constexpr std::array kWarnings = {"Warning!"_L1,
                                  "Invalid "_L1,
                                  "Non-numeric EM-cutoff"_L1,
                                  "Please enter "_L1,
                                  "You did not input "_L1,
                                  "Too many rows"_L1,
                                  "There is no more point left"_L1,
                                  "This option is only available "_L1,
                                  "The error log could not be written"_L1};

// What a hasty Yes would lose.
constexpr std::array kQuestionsWithALoss = {"Warning!"_L1, "Attention: you have not exported"_L1,
                                            "This action will permanently delete "_L1};

template <typename Beginnings>
bool beginsLikeOneOf(const QString& text, const Beginnings& beginnings) {
    return std::any_of(beginnings.begin(), beginnings.end(),
                       [&text](QLatin1StringView beginning) { return text.startsWith(beginning); });
}

}  // namespace

MessageKind messageKind(const QString& text, bool question) {
    if (question)
        return beginsLikeOneOf(text, kQuestionsWithALoss) ? MessageKind::kWarning : MessageKind::kQuestion;
    if (beginsLikeOneOf(text, kInformation)) return MessageKind::kInformation;
    return beginsLikeOneOf(text, kWarnings) ? MessageKind::kWarning : MessageKind::kError;
}

}  // namespace tessel
