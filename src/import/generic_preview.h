// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/file_kind.h"
#include "import/generic_reader.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

/// A value of a delimited file as its preview shows it.
struct PreviewValue {
    std::string text;  ///< shortened, without control characters; empty when the value is missing
    bool numeric = false;
    bool isWhole = false;  ///< a whole number
};

/// A record as the preview shows it.
struct PreviewRecord {
    std::int64_t line = 0;             ///< the line on which it begins, from 1
    std::vector<PreviewValue> values;  ///< fewer than the layout's when it is cut off
};

/// The beginning of a delimited file as a layout reads it.
struct GenericPreview {
    std::vector<PreviewRecord> records;  ///< the first ones, 50 at most
    std::int64_t lines = 0;  ///< lines with values in the part that was looked at, headers not counted
    /// How many values most of these lines hold by themselves, 0 without any; a separator that ends each of
    /// them is no value.
    std::int64_t valuesOfMost = 0;
    std::int64_t linesOfMost = 0;  ///< how many lines hold as many
    /// Lines that do not hold as many values as the layout takes, headers counted, and the first of them.
    std::int64_t linesNotFitting = 0;
    std::int64_t firstLineNotFitting = 0;

    /// Every line holds as many values as a layout with so many columns takes.
    bool fits(int columns) const { return valuesOfMost == columns && linesNotFitting == 0; }
};

/// Reads the beginning of a file (its first 64 KiB, or all of it) as an import with the layout would.
GenericPreview previewGenericFile(std::string_view firstBytes, const FileKind& kind,
                                  const GenericLayout& layout, bool decimalCommas);

/// How many values the lines hold and how many the layout takes, in one sentence.
std::string fitSentence(const GenericPreview& preview, int columns);

/// What speaks against the layout though the number of values does not: site or row numbers that are no whole
/// numbers, in the records shown. A sentence, or nothing.
std::string doubtSentence(const GenericPreview& preview, const GenericLayout& layout);

/// The layouts that take as many values as the lines hold, as places in kGenericLayouts.
std::vector<std::size_t> fittingLayouts(const GenericPreview& preview);

/// What a user should know of the kind of a file that is read by values, in sentences; empty for an ordinary
/// one.
std::string fileKindNotice(const FileKind& kind);

}  // namespace tessel
