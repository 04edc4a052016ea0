// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/file_replacement.h"
#include "base/session.h"
#include "import/import_summary.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

/// Why a line or a record was rejected, in the words of the error log.
namespace reject_reason {
inline constexpr std::string_view kSiteID = "  -> non-numeric site ID";
inline constexpr std::string_view kEM2 = "  -> non-numeric 2nd EM reading";
inline constexpr std::string_view kEM2BelowCutoff = "  -> 2nd EM reading below cut-off";
inline constexpr std::string_view kX = "  -> non-numeric X-coord data";
inline constexpr std::string_view kY = "  -> non-numeric Y-coord data";
inline constexpr std::string_view kEM1 = "  -> non-numeric 1st EM reading";
inline constexpr std::string_view kEM1BelowCutoff = "  -> 1st EM reading below cut-off";
inline constexpr std::string_view kRow = "  -> non-numeric row number";
inline constexpr std::string_view kIncomplete = "  -> incomplete record";
inline constexpr std::string_view kIncompleteAtEnd = "  -> incomplete record at end of file";
}  // namespace reject_reason

/// Where the error log lies.
std::string errorLogPath(const Session& session);

/// The error log of one import: one line for each rejected one, ended by CR LF:
/// "Line # 17 ", the line or the record's values byte for byte, the reason. It takes the place of the last
/// import's log when it is committed; an import that fails leaves that one as it was.
///
/// A log that cannot be written (no permission, disk full) is no reason to refuse the import: the summary
/// then tells, nothing more is written, and the last import's log stays.
class ErrorLog {
  public:
    explicit ErrorLog(const std::string& path);

    void reject(std::int64_t lineNumber, std::string_view text, std::string_view reason);

    /// Puts the log in place.
    void commit();

    /// Writes what the log knows into the summary: rejected lines by reason, path, problem, first lines. They
    /// are counted whether or not the log can be written.
    void describe(ImportSummary& summary) const;

  private:
    void count(std::int64_t lineNumber, std::string_view reason);
    template <typename Action>
    void attempt(Action action);

    std::string path_;
    std::optional<FileReplacement> file_;
    std::string problem_;  // path and the system's reason if the log could not be written, else empty
    std::vector<RejectedLines> rejected_;
    std::vector<std::string> firstLines_;
};

}  // namespace tessel
