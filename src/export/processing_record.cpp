// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/processing_record.h"

#include "base/input_file.h"
#include "base/numbers.h"
#include "base/run_time_error.h"
#include "base/sha256.h"

#include <array>
#include <cmath>
#include <ctime>
#include <exception>
#include <filesystem>

namespace tessel {

namespace {

constexpr int kFormat = 1;

// 2026-11-21T16:04:05+01:00
std::string timeText(RecordTime time) {
    const std::time_t seconds =
        std::chrono::system_clock::to_time_t(std::chrono::floor<std::chrono::seconds>(time));
    std::tm local{};
    ::localtime_r(&seconds, &local);
    std::array<char, 40> text{};
    std::string zone(text.data(), std::strftime(text.data(), text.size(), "%z", &local));
    zone.insert(zone.size() - 2, 1, ':');
    return std::string(text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &local)) +
           zone;
}

class RecordWriter {
  public:
    std::string write(const ProcessingRecord& record) {
        explain();
        yaml_.number("record_format", std::int64_t{kFormat});
        yaml_.plain("written", timeText(record.time));
        yaml_.map("program", [&] {
            yaml_.text("name", record.program);
            yaml_.text("version", record.version);
        });
        if (record.import) writeImport(*record.import);
        writeActs(record);
        yaml_.map("survey", [&] { counts(record.sites, record.rows); });
        yaml_.list("exports", record.exports, [this](const RecordedExport& each) { writeExport(each); });
        return yaml_.document();
    }

  private:
    void explain() {
        yaml_.comment("Processing record of a soil conductivity survey.");
        yaml_.comment("Lines are those of the sensor file, from 1. Runs are [first, last], both included.");
        yaml_.comment(
            "A site that has been removed stands in a run of lines, and of site numbers if there are any.");
        yaml_.comment("In texts \\xNN stands for a byte that is no UTF-8, or for a backslash.");
    }

    void counts(std::int64_t sites, int rows) {
        yaml_.number("sites", sites);
        yaml_.number("rows", std::int64_t{rows});
    }

    void writeFile(const RecordedFile& file) {
        yaml_.text("path", file.path);
        yaml_.number("size", file.state.size);
        if (file.sha256.empty())
            yaml_.plain("sha256", "null");
        else
            yaml_.text("sha256", file.sha256);
        if (!file.note.empty()) yaml_.text("note", file.note);
    }

    // What is a number to us is one to every reader.
    void writeValue(const std::string& name, const std::string& value) {
        const std::string key = YamlWriter::quoted(name);
        const std::optional<double> number = numericValue(value);
        if (number)
            yaml_.number(key, *number);
        else if (value == "true" || value == "false")
            yaml_.plain(key, value);
        else
            yaml_.text(key, value);
    }

    void writeValues(const RecordedValues& values) {
        if (values.empty()) return;
        yaml_.map("parameters", [&] {
            for (const auto& [name, value] : values)
                writeValue(name, value);
        });
    }

    void writeField(const FieldPlace& field) {
        yaml_.text("field", field.name);
        if (field.last == 0) return yaml_.number("place", std::int64_t{field.first});
        yaml_.number("first_column", std::int64_t{field.first});
        yaml_.number("last_column", std::int64_t{field.last});
    }

    void writeRejection(const RejectedLines& rejection) {
        yaml_.text("reason", rejection.reason);
        yaml_.number("lines", rejection.lines);
        yaml_.number("first_line", rejection.firstLine);
    }

    void writeImport(const RecordedImport& import) {
        yaml_.map("sensor_file", [&] {
            writeFile(import.file);
            yaml_.plain("modified", timeText(import.file.state.modified));
        });
        yaml_.map("import", [&] {
            yaml_.plain("time", timeText(import.time));
            yaml_.text("kind", import.kind);
            writeValues(import.parameters);
            yaml_.list("layout", import.fields, [this](const FieldPlace& each) { writeField(each); });
            yaml_.number("lines_read", import.linesRead);
            yaml_.list("rejected", import.rejected,
                       [this](const RejectedLines& each) { writeRejection(each); });
            counts(import.sites, import.rows);
        });
    }

    void writeActs(const ProcessingRecord& record) {
        if (record.forgottenActs > 0) {
            yaml_.comment("Acts before those listed, of which the program no longer knew anything.");
            yaml_.number("forgotten_acts", record.forgottenActs);
        }
        yaml_.list("acts", record.acts, [this](const RecordedAct& each) { writeAct(each); });
    }

    void writeAct(const RecordedAct& act) {
        yaml_.number("act", ++acts_);
        yaml_.plain("time", timeText(act.time));
        yaml_.text("kind", act.kind);
        yaml_.text("what", act.words);
        writeValues(act.parameters);
        if (act.removed) yaml_.map("removed", [&] { writeRemoval(*act.removed); });
        counts(act.sites, act.rows);
    }

    void writeRemoval(const RecordedRemoval& removed) {
        yaml_.number("sites", removed.sites);
        if (!removed.lines.empty()) yaml_.runs("lines", removed.lines);
        if (!removed.siteNumbers.empty()) yaml_.runs("site_numbers", removed.siteNumbers);
    }

    void writeExport(const RecordedExport& each) {
        writeFile(each.file);
        yaml_.plain("time", timeText(each.time));
        yaml_.text("fields", each.format);
        yaml_.number("sites", each.sites);
        if (each.firstRow > 0) yaml_.number("first_row", std::int64_t{each.firstRow});
        yaml_.plain("is_survey_as_recorded", each.isOfThisState ? "true" : "false");
    }

    YamlWriter yaml_;
    std::int64_t acts_ = 0;
};

bool isNext(double last, double number) {
    return number == last + 1 && number > last && std::trunc(number) == number;
}

template <typename Number>
std::vector<NumberRun> runsIn(std::span<const Number> numbers) {
    std::vector<NumberRun> runs;
    for (const Number each : numbers) {
        const auto number = static_cast<double>(each);
        const bool goesOn = !runs.empty() && isNext(runs.back().last, number);
        if (!goesOn) runs.push_back({number, number});
        runs.back().last = number;
    }
    return runs;
}

void requireUnchanged(const RecordedFile& file) {
    if (stateOfInputFile(file.path) != file.state)
        throw RunTimeError(RunTimeError::kFile, file.path + " has been changed since");
}

}  // namespace

std::string recordText(const ProcessingRecord& record) {
    return RecordWriter().write(record);
}

std::vector<NumberRun> runsOf(std::span<const std::uint32_t> numbers) {
    return runsIn(numbers);
}

std::vector<NumberRun> runsOf(std::span<const double> numbers) {
    return runsIn(numbers);
}

RecordedExport beginExport(const Survey& survey, const std::string& path, const TransectFormat& format) {
    RecordedExport file;
    file.file.path = std::filesystem::absolute(path).lexically_normal().string();
    file.time = std::chrono::system_clock::now();
    file.format = recordFormat(survey.SiteIDPresent, survey.TwoEMColumns, format.withRows);
    file.sites = survey.NumSites;
    file.firstRow = format.withRows ? format.firstRow : 0;
    file.isOfThisState = true;
    return file;
}

void noteState(RecordedFile& file) noexcept {
    try {
        file.state = stateOfInputFile(file.path);
    } catch (const std::exception&) {
        // It has gone already, which will be said when it is looked for.
    }
}

void identify(RecordedFile& file) {
    if (!file.sha256.empty()) return;
    try {
        requireUnchanged(file);
        std::string digest = sha256OfFile(file.path);
        requireUnchanged(file);
        file.sha256 = std::move(digest);
        file.note.clear();
    } catch (const RunTimeError& error) {
        file.note = error.description();
    }
}

}  // namespace tessel
