// SPDX-License-Identifier: GPL-3.0-or-later
// What fails while saved work is read: it is told, or all of the work is there, and its file stays.
#include "storage/recovery_file.h"
#include "storage/recovery_worker.h"
#include "storage/survey_file.h"
#include "support/file_calls.h"
#include "support/journal_bits.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

using Answer = std::optional<FileAnswer>;

class OpeningFaults : public testing::Test {
  protected:
    // Reads again and again while the first call fails, the second, and so on: this one only, or all from
    // there on. How often that was told.
    int failuresOf(const std::function<SavedWork()>& read, bool isGone) {
        int failures = 0;
        for (long calls = 0, faulty = 1; calls >= faulty - 1 && !HasFailure(); ++faulty) {
            SCOPED_TRACE(faulty);
            calls = 0;
            const WatchedFileCalls watched([&](const FileCall&) -> Answer {
                const bool fails = ++calls == faulty || (isGone && calls > faulty);
                return fails ? Answer(FileAnswer{-1, EIO}) : std::nullopt;
            });
            const std::string told =
                descriptionOf([&] { EXPECT_EQ(journalDifferences(read().journal, journal), ""); });
            failures += told != "no error";
        }
        return failures;
    }

    Journal journal = randomSession(5, 12);
    const TemporaryFolder folder;
    const std::string path = folder / "field.gpkg";
};

}  // namespace

TEST_F(OpeningFaults, OfASurveyFileAreToldAtEveryCall) {
    saveSurvey(path, journal, {});
    const std::string before = readFile(path);
    for (const bool isGone : {false, true})
        EXPECT_GE(failuresOf([this] { return openSurvey(path); }, isGone), 5);
    EXPECT_EQ(readFile(path), before);
    EXPECT_EQ(filesIn(folder), 1U);
}

TEST_F(OpeningFaults, OfASurveyFileAreNoSignalsThatInterrupt) {
    saveSurvey(path, journal, {});
    bool isInterrupted = false;
    const WatchedFileCalls watched([&](const FileCall& call) -> Answer {
        if (call.name == "close" || call.name == "statfs") return std::nullopt;
        isInterrupted = !isInterrupted;
        return isInterrupted ? Answer(FileAnswer{-1, EINTR}) : std::nullopt;
    });
    EXPECT_EQ(journalDifferences(openSurvey(path).journal, journal), "");
    EXPECT_GE(watched.count("pread"), 10);
}

TEST_F(OpeningFaults, OfARecoveryFileAreToldOrItIsNotOfferedNow) {
    {
        Worker worker(folder.path());
        worker.work(5, 12);
        worker.journal.watch({});
        journal = std::move(worker.journal);
    }
    for (const bool isGone : {false, true}) {
        const auto read = [this] {
            const auto left = findLeftWork(folder.path());
            if (left.empty()) throw RunTimeError::file(folder.path(), "cannot be read", EIO);
            return left.front().read();
        };
        EXPECT_GE(failuresOf(read, isGone), 3);
        EXPECT_EQ(filesIn(folder), 1U) << "what cannot be read now is not taken away";
    }
}

}  // namespace tessel
