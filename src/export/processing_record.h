// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/lines_read.h"
#include "base/input_file.h"
#include "base/program_version.h"
#include "export/transect_file.h"
#include "export/yaml_writer.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace tessel {

// The processing record: what has been done to a survey from its sensor file to its export, as a text that
// can be read beside a paper and by a program.

using RecordTime = std::chrono::system_clock::time_point;

/// Name and value. What is a number, or true or false, is that to a reader of the record, all else a text.
using RecordedValues = std::vector<std::pair<std::string, std::string>>;

/// A file as it was when it was read or written, and its digest.
struct RecordedFile {
    std::string path;
    FileState state;
    std::string sha256;  ///< empty when it is not known; then
    std::string note;    ///< says why
};

struct RecordedImport {
    RecordedFile file;
    RecordTime time;
    std::string kind;  ///< of file, in words
    RecordedValues parameters;
    std::vector<FieldPlace> fields;
    std::int64_t linesRead = 0;
    std::vector<RejectedLines> rejected;  ///< the reasons without the arrow of the error log
    std::int64_t sites = 0;               ///< right after the import, as rows
    int rows = 0;
};

/// Sites that an act has taken out, each by its line in the sensor file and by its number.
struct RecordedRemoval {
    std::int64_t sites = 0;
    std::vector<NumberRun> lines;
    std::vector<NumberRun> siteNumbers;  ///< empty for a survey without
};

/// An act that is in force.
struct RecordedAct {
    RecordTime time;
    std::string kind;   ///< as a program tells it from others
    std::string words;  ///< what was done
    RecordedValues parameters;
    std::optional<RecordedRemoval> removed;
    std::int64_t sites = 0;  ///< after it, as rows
    int rows = 0;
};

struct RecordedExport {
    RecordedFile file;
    RecordTime time;
    std::string format;          ///< the names of the fields on a line
    std::int64_t sites = 0;      ///< written
    int firstRow = 0;            ///< the number that row 1 got; 0 without rows
    bool isOfThisState = false;  ///< the survey is still the one that was written
};

struct ProcessingRecord {
    std::string program = kProgramName, version = kProgramVersion;
    RecordTime time;  ///< of the record
    std::optional<RecordedImport> import;
    std::int64_t forgottenActs = 0;  ///< before those that are listed; nothing is known of them any more
    std::vector<RecordedAct> acts;
    std::int64_t sites = 0;  ///< now, as rows
    int rows = 0;
    std::vector<RecordedExport> exports;
};

/// The record as YAML. Times are those of the computer's clock and time zone.
std::string recordText(const ProcessingRecord& record);

/// The runs of numbers that go up by one, in their order.
std::vector<NumberRun> runsOf(std::span<const std::uint32_t> numbers);
std::vector<NumberRun> runsOf(std::span<const double> numbers);

/// An export that is about to be written, but for its size and digest.
RecordedExport beginExport(const Survey& survey, const std::string& path, const TransectFormat& format);

/// Notes what a file is like that has just been written, so that it is known when it is another one later.
void noteState(RecordedFile& file) noexcept;

/// Fills in the digest of a file if it is not known yet: path and state are those from when it was read or
/// written. Where it cannot be read any more or has been changed since, the note says so instead.
void identify(RecordedFile& file);

}  // namespace tessel
