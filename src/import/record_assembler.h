// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/value_scanner.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessel {

/// The values of a record as far as they have been read.
struct RecordValues {
    const ScannedValue* values = nullptr;
    std::size_t count = 0;
    std::int64_t line = 0;  ///< the line on which the record begins
};

/// A record that goes on behind the lines that were read.
struct OpenRecord {
    struct Value {
        std::string text;
        double number = 0;
        bool numeric = false;
    };
    std::vector<Value> values;
    std::int64_t line = 0;  ///< on which it begins
    bool afterSeparator = false;

    bool isNothing() const { return values.empty(); }
};

/// Makes records of the lines of a delimited file: as many values as a layout has columns, over line ends
/// too. A record whose line ends with a separator is cut off there when the next line is a record of its own.
///
/// `Sink` takes what comes of it: record(RecordValues) for each whole record; incompleteRecord(RecordValues,
/// bool atEnd) for one that was cut off, by the next line or the end of the file; lineNotFitting(line number)
/// for each line that holds another number of values than the layout.
template <class Scanner, class Sink>
class RecordAssembler {
  public:
    static constexpr std::size_t kMostColumns = 6;

    RecordAssembler(std::size_t columns, Sink& sink) : columns_(columns), sink_(sink) {}

    void readLine(std::string_view line, std::int64_t lineNumber) {
        scanner_.beginLine(line);
        if (count_ == 0)
            scanner_.expectValue();
        else if (scanner_.afterSeparator() && isRecordOfItsOwn(line))
            cutOff(false);
        const std::size_t open = count_;
        std::size_t records = 0;
        while (scanner_.next(values_[count_])) {
            if (count_ == 0) recordLine_ = lineNumber;
            if (++count_ < columns_) continue;
            count_ = 0;
            ++records;
            sink_.record(RecordValues{values_.data(), columns_, recordLine_});
        }
        if (count_ > 0) keepTexts();
        if ((open | count_) != 0 || records != 1) judgeLine(records, open, lineNumber);
    }

    /// Whether the next line begins a record.
    bool isBetweenRecords() const { return count_ == 0; }

    void finishFile() {
        if (count_ > 0) cutOff(true);
    }

    /// What is left of the lines that were read, for lines that are counted from behind `lastLine`; nothing
    /// is left of it here.
    OpenRecord takeOpenRecord(std::int64_t lastLine) {
        OpenRecord record{{}, recordLine_ - lastLine, scanner_.afterSeparator()};
        for (const ScannedValue& value : std::span(values_).first(std::exchange(count_, 0)))
            record.values.push_back({std::string(value.text), value.number, value.numeric});
        return record;
    }

    /// Begins with a record that goes on here. Requires that none does yet.
    void goOnWith(const OpenRecord& record) {
        for (const OpenRecord::Value& value : record.values) {
            kept_[count_] = value.text;
            values_[count_] = {kept_[count_], value.number, value.numeric};
            ++count_;
        }
        recordLine_ = record.line;
        scanner_.goOn(record.afterSeparator);
    }

  private:
    // Taking a record's missing last value from the next record would put every value that follows into a
    // wrong column without a word. A separator behind a whole record is no missing value.
    bool isRecordOfItsOwn(std::string_view line) const {
        const std::size_t values = valuesOfLine<Scanner>(line, columns_ + 1);
        return values == columns_ || (values == columns_ + 1 && endsWithSeparator<Scanner>(line));
    }

    void cutOff(bool atEnd) {
        sink_.incompleteRecord(RecordValues{values_.data(), count_, recordLine_}, atEnd);
        count_ = 0;
        scanner_.expectValue();
    }

    // A line fits that holds as many values as the layout, the missing one behind its last separator counted;
    // `open` values were there before it. A line of blanks holds none and is passed over.
    void judgeLine(std::size_t records, std::size_t open, std::int64_t lineNumber) {
        const std::size_t values = records * columns_ + count_ - open;
        const bool lastIsMissing = count_ > 0 && scanner_.afterSeparator();
        if (values != 0 && values != columns_ && !(lastIsMissing && values + 1 == columns_))
            sink_.lineNotFitting(lineNumber);
    }

    // A record goes on in the next line: what its values point to is about to vanish.
    void keepTexts() {
        for (std::size_t i = 0; i < count_; ++i) {
            if (values_[i].text.data() != kept_[i].data()) kept_[i].assign(values_[i].text);
            values_[i].text = kept_[i];
        }
    }

    const std::size_t columns_;
    Sink& sink_;
    Scanner scanner_;
    std::array<ScannedValue, kMostColumns> values_;  // the record under way
    std::array<std::string, kMostColumns> kept_;     // texts of values on earlier lines
    std::size_t count_ = 0;                          // values of the record so far
    std::int64_t recordLine_ = 0;                    // the line on which it began
};

}  // namespace tessel
