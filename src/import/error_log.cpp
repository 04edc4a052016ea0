#include "import/error_log.h"

#include "app/run_time_error.h"
#include "app/survey.h"
#include "import/import_report.h"

std::string errorLogPath(const Session& session) {
    return session.DataDir + "/error_log.dat";
}

ErrorLog::ErrorLog(const std::string& path) {
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

void ErrorLog::reject(std::int64_t lineNumber, std::string_view text, std::string_view reason) {
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
