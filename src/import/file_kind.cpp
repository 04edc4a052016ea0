// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/file_kind.h"

#include "base/input_file.h"
#include "base/text_lines.h"
#include "import/value_scanner.h"

namespace tessel {

namespace {

// The values of a line, and how many of them are numbers, and how many of these have a decimal comma.
struct LineOfValues {
    int values = 0, numbers = 0, commas = 0;

    bool ofNumbers() const { return numbers >= 2 && numbers * 2 >= values; }
};

bool hasDigitsBehindComma(std::string_view number) {
    const std::size_t comma = number.find(',');
    return comma != std::string_view::npos && number.find_first_of("0123456789", comma) == comma + 1;
}

template <class Scanner>
LineOfValues valuesOf(std::string_view line) {
    LineOfValues found;
    Scanner scanner;
    scanner.beginLine(line);
    for (ScannedValue value; scanner.next(value); ++found.values) {
        found.numbers += value.numeric;
        found.commas += value.numeric && hasDigitsBehindComma(value.text);
    }
    return found;
}

// Whether semicolons stand between values and commas in numbers.
bool hasDecimalCommas(std::string_view line) {
    if (line.find(DecimalCommaScanner::kSeparator) == std::string_view::npos) return false;
    const LineOfValues found = valuesOf<DecimalCommaScanner>(line);
    return found.commas > 0 && found.ofNumbers();
}

bool hasTabBetweenValues(std::string_view line) {
    const std::size_t first = line.find_first_not_of(" \t");
    const std::size_t last = line.find_last_not_of(" \t");
    return first != std::string_view::npos && line.substr(first, last - first).find('\t') != line.npos;
}

bool isBlankLine(std::string_view line) {
    return line.find_first_not_of(" \t") == std::string_view::npos;
}

// What is true of the lines of a file shows in these first ones.
constexpr int kEnoughLines = 200;

class LineCounter {
  public:
    bool hasEnough() const { return linesOfNumbers_ == kEnoughLines; }

    void add(std::string_view line) {
        const bool decimalCommas = hasDecimalCommas(line);
        if (!decimalCommas && !valuesOf<ValueScanner>(line).ofNumbers()) {
            if (linesOfNumbers_ == 0) addHeaderLine(line);
            return;
        }
        ++linesOfNumbers_;
        decimalCommas_ += decimalCommas;
        tabs_ += hasTabBetweenValues(line);
    }

    void describe(FileKind& kind) const {
        if (linesOfNumbers_ == 0) return;
        kind.decimalCommas = decimalCommas_ * 2 > linesOfNumbers_;
        kind.tabs = tabs_ * 2 > linesOfNumbers_;
        if (textInHeader_) kind.headerLines = headerLines_;
    }

  private:
    void addHeaderLine(std::string_view line) {
        ++headerLines_;
        textInHeader_ = textInHeader_ || !isBlankLine(line);
    }

    int linesOfNumbers_ = 0, decimalCommas_ = 0, tabs_ = 0, headerLines_ = 0;
    bool textInHeader_ = false;
};

}  // namespace

FileKind recogniseFileKind(std::string_view firstBytes) {
    FileKind kind;
    firstBytes = firstBytes.substr(0, kFirstBytes);
    kind.encoding = recogniseTextEncoding(firstBytes);
    std::string decoded;
    std::string_view text = firstBytes.substr(byteOrderMarkLength(firstBytes));
    if (kind.encoding != TextEncoding::kBytes) text = decoded = decodedText(firstBytes, kind.encoding);
    kind.isText = looksLikeText(text);
    if (!kind.isText) return kind;
    LineCounter counter;
    // The last line of a large file is cut off somewhere.
    TextLines lines(text, firstBytes.size() == kFirstBytes);
    for (std::string_view line; !counter.hasEnough() && lines.next(line);)
        counter.add(line);
    counter.describe(kind);
    return kind;
}

FileKind recogniseFileKind(const std::string& path) {
    return recogniseFileKind(std::string_view(readFirstBytes(path, kFirstBytes)));
}

}  // namespace tessel
