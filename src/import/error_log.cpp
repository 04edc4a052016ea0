// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/error_log.h"

#include "base/run_time_error.h"
#include "base/session.h"
#include "import/import_report.h"

namespace tessel {

std::string errorLogPath(const Session& session) {
    return session.DataDir + "/error_log.dat";
}

namespace {

constexpr std::size_t kFirstLines = 5;
constexpr std::size_t kShownWidth = 1'000;  // bytes of a line

}  // namespace

ErrorLog::ErrorLog(const std::string& path) : path_(path) {
    attempt([&] { file_.emplace(path); });
}

template <typename Action>
void ErrorLog::attempt(Action action) {
    try {
        action();
    } catch (const RunTimeError& error) {
        problem_ = error.description();
        file_.reset();
    }
}

void ErrorLog::count(std::int64_t lineNumber, std::string_view reason) {
    for (RejectedLines& known : rejected_) {
        if (known.reason != reason) continue;
        ++known.lines;
        return;
    }
    rejected_.push_back({std::string(reason), 1, lineNumber});
}

void ErrorLog::reject(std::int64_t lineNumber, std::string_view text, std::string_view reason) {
    count(lineNumber, reason);
    if (firstLines_.size() < kFirstLines)
        firstLines_.push_back("Line #" + numberField(lineNumber) + ' ' +
                              std::string(text.substr(0, kShownWidth)) + std::string(reason));
    if (!file_) return;
    attempt([&] {
        file_->write("Line #");
        file_->write(numberField(lineNumber));
        file_->write(" ");
        file_->write(text);
        file_->write(reason);
        file_->write("\r\n");
    });
}

void ErrorLog::commit() {
    if (file_) attempt([&] { file_->commit(); });
}

void ErrorLog::describe(ImportSummary& summary) const {
    summary.logPath = path_;
    summary.logProblem = problem_;
    summary.rejected = rejected_;
    summary.firstLogLines = firstLines_;
}

}  // namespace tessel
