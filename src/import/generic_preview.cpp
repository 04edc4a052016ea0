// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/generic_preview.h"

#include "base/text_lines.h"
#include "import/record_assembler.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <span>

namespace tessel {

namespace {

constexpr std::size_t kRecords = 50;
constexpr std::size_t kShownWidth = 40;  // bytes of a value

bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

std::string shownText(std::string_view text) {
    std::string shown(text.substr(0, kShownWidth));
    if (shown.size() < text.size()) {
        while (!shown.empty() && isContinuation(text[shown.size()]))
            shown.pop_back();
        shown += "...";
    }
    const auto isControl = [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; };
    std::replace_if(shown.begin(), shown.end(), isControl, '?');
    return shown;
}

// Takes the records of the beginning.
class PreviewRecords {
  public:
    explicit PreviewRecords(GenericPreview& preview) : preview_(preview) {}

    void record(const RecordValues& record) { incompleteRecord(record, false); }
    void incompleteRecord(const RecordValues& record, bool) {
        if (preview_.records.size() == kRecords) return;
        PreviewRecord shown{record.line, {}};
        for (const ScannedValue& value : std::span(record.values, record.count))
            shown.values.push_back({shownText(value.text), value.numeric,
                                    value.numeric && value.number == std::floor(value.number)});
        preview_.records.push_back(std::move(shown));
    }
    void lineNotFitting(std::int64_t lineNumber) {
        if (preview_.linesNotFitting++ == 0) preview_.firstLineNotFitting = lineNumber;
    }

  private:
    GenericPreview& preview_;
};

// Counts how many values lines hold.
template <class Scanner>
class ValueCounts {
  public:
    void add(std::string_view line) {
        const std::size_t values = valuesOfLine<Scanner>(line, line.size());
        if (values == 0) return;
        Lines& lines = counts_[static_cast<std::int64_t>(values)];
        ++lines.all;
        lines.ended += endsWithSeparator<Scanner>(line);
    }

    void describe(GenericPreview& preview) const {
        for (const auto& [values, lines] : counts_) {
            preview.lines += lines.all;
            if (lines.all <= preview.linesOfMost) continue;
            preview.linesOfMost = lines.all;
            // What ends every line with values separates nothing.
            preview.valuesOfMost = lines.ended * 2 > lines.all ? values - 1 : values;
        }
    }

  private:
    struct Lines {
        std::int64_t all = 0, ended = 0;
    };
    std::map<std::int64_t, Lines> counts_;
};

template <class Scanner>
GenericPreview preview(std::string_view text, bool cutOff, int headerLines, std::size_t columns) {
    GenericPreview preview;
    PreviewRecords sink(preview);
    RecordAssembler<Scanner, PreviewRecords> records(columns, sink);
    ValueCounts<Scanner> counts;
    std::int64_t lineNumber = 0;
    TextLines lines(text, cutOff);
    for (std::string_view line; lines.next(line);) {
        records.readLine(line, ++lineNumber);
        if (lineNumber > headerLines) counts.add(line);
    }
    if (!cutOff) records.finishFile();
    counts.describe(preview);
    return preview;
}

std::string counted(std::int64_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace

GenericPreview previewGenericFile(std::string_view firstBytes, const FileKind& kind,
                                  const GenericLayout& layout, bool decimalCommas) {
    const std::string text = decodedText(firstBytes, kind.encoding);
    const bool cutOff = firstBytes.size() >= kFirstBytes;
    const auto columns = static_cast<std::size_t>(layout.columns());
    return decimalCommas ? preview<DecimalCommaScanner>(text, cutOff, kind.headerLines, columns)
                         : preview<ValueScanner>(text, cutOff, kind.headerLines, columns);
}

std::string fitSentence(const GenericPreview& preview, int columns) {
    if (preview.lines == 0) return "The file holds no values.";
    const bool all = preview.linesOfMost == preview.lines;
    std::string sentence = (all ? "The lines hold " : "Most lines hold ") +
                           counted(preview.valuesOfMost, "value") + ", this layout takes " +
                           std::to_string(columns);
    if (preview.fits(columns)) return sentence + ".";
    if (preview.valuesOfMost != columns) return sentence + ": values would be read across line ends.";
    const std::string first = std::to_string(preview.firstLineNotFitting);
    if (preview.linesNotFitting == 1)
        return sentence + "; line " + first + " does not fit, values may be read across its end.";
    return sentence + "; " + counted(preview.linesNotFitting, "line") +
           " of the beginning do not fit, the first is line " + first +
           ": values may be read across their ends.";
}

std::string doubtSentence(const GenericPreview& preview, const GenericLayout& layout) {
    const auto isOddAt = [&](std::size_t column) {
        return std::ranges::any_of(preview.records, [column](const PreviewRecord& record) {
            return column < record.values.size() && record.values[column].numeric &&
                   !record.values[column].isWhole;
        });
    };
    const bool oddSites = layout.siteNumber && isOddAt(0);
    const bool oddRows = layout.rowNumber && isOddAt(static_cast<std::size_t>(layout.columns()) - 1);
    if (!oddSites && !oddRows) return {};
    const std::string what = oddSites && oddRows ? "Site numbers and row numbers"
                             : oddSites          ? "Site numbers"
                                                 : "Row numbers";
    return what + " would be no whole numbers: another layout may be the right one.";
}

std::vector<std::size_t> fittingLayouts(const GenericPreview& preview) {
    std::vector<std::size_t> fitting;
    for (std::size_t i = 0; i < kGenericLayouts.size(); ++i)
        if (kGenericLayouts[i].columns() == preview.valuesOfMost) fitting.push_back(i);
    return fitting;
}

std::string fileKindNotice(const FileKind& kind) {
    if (!kind.isText) return "This is not a text file.";
    std::string notice;
    const auto add = [&notice](const std::string& sentence) {
        if (!notice.empty()) notice += ' ';
        notice += sentence;
    };
    if (kind.encoding != TextEncoding::kBytes) add("The characters of this file are stored as UTF-16.");
    if (kind.decimalCommas) add("Semicolons stand between its values, and its decimal signs are commas.");
    if (kind.tabs) add("Tabs stand between its values.");
    if (kind.headerLines == 1) add("The first line is a header.");
    if (kind.headerLines > 1) add("The first " + std::to_string(kind.headerLines) + " lines are a header.");
    return notice;
}

}  // namespace tessel
