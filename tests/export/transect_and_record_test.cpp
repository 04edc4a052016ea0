// SPDX-License-Identifier: GPL-3.0-or-later
// The transect file and the record beside it: both or none.
#include "base/sha256.h"
#include "export/transect_file.h"
#include "support/file_calls.h"
#include "support/made_survey.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

class TransectAndRecord : public testing::Test {
  protected:
    TransectAndRecord() {
        for (int i = 0; i < 3000; ++i)
            sites_.push_back({i * 0.5, 100, 30, 60, 1});
        survey = madeSurvey(sites_);
    }

    std::string path() const { return folder / "field.txt"; }
    void write() {
        writeTransectFileAndRecord(survey, path(), {}, [this](const WrittenFile& file) {
            written = file;
            return "sha256: " + file.sha256 + "\n";
        });
    }
    std::string failure() {
        return descriptionOf([this] { write(); });
    }
    void writeOldFiles() const {
        writeFile(path(), "old transect");
        writeFile(recordPath(path()), "old record");
    }
    void expectOldFiles(const std::string& why) const {
        EXPECT_EQ(readFile(path()), "old transect") << why;
        EXPECT_EQ(readFile(recordPath(path())), "old record") << why;
        EXPECT_EQ(filesIn(folder), 2U) << why;
    }

    const TemporaryFolder folder;
    Survey survey;
    WrittenFile written;

  private:
    std::vector<MadeSite> sites_;
};

}  // namespace

TEST_F(TransectAndRecord, LieBesideEachOtherUnderTheSameName) {
    EXPECT_EQ(recordPath("/a/field.txt"), "/a/field.txt.record.yaml");
    write();
    EXPECT_EQ(readFile(recordPath(path())), "sha256: " + sha256OfFile(path()) + "\n");
    EXPECT_EQ(written.sha256, sha256OfFile(path()));
    EXPECT_EQ(written.size, static_cast<std::int64_t>(std::filesystem::file_size(path())));
    EXPECT_EQ(filesIn(folder), 2U);
    const std::string together = readFile(path());
    writeTransectFile(survey, path(), {});
    EXPECT_EQ(readFile(path()), together);
}

TEST_F(TransectAndRecord, ReplaceThoseThatWereThere) {
    writeOldFiles();
    EXPECT_EQ(failure(), "no error");
    EXPECT_EQ(readFile(recordPath(path())), "sha256: " + sha256OfFile(path()) + "\n");
    EXPECT_EQ(filesIn(folder), 2U);
}

TEST_F(TransectAndRecord, StayAsTheyWereWhicheverCallFails) {
    int failures = 0;
    for (long failing = 1;; ++failing) {
        writeOldFiles();
        long calls = 0;
        std::string told;
        {
            const WatchedFileCalls watched([&](const FileCall&) -> std::optional<FileAnswer> {
                if (++calls != failing) return std::nullopt;
                return FileAnswer{-1, ENOSPC};
            });
            told = failure();
        }
        if (calls < failing) break;
        if (told == "no error" || told.find("has been written") != std::string::npos) {
            EXPECT_EQ(readFile(recordPath(path())), "sha256: " + sha256OfFile(path()) + "\n") << told;
            continue;
        }
        expectOldFiles(told);
        ++failures;
    }
    EXPECT_GE(failures, 10);
}

TEST_F(TransectAndRecord, StayAsTheyWereWhenOneOfThemCannotBeMade) {
    writeOldFiles();
    std::filesystem::permissions(recordPath(path()), std::filesystem::perms::owner_read);
    EXPECT_EQ(failure(), recordPath(path()) + " cannot be written: Permission denied");
    expectOldFiles("a write-protected record");
    std::filesystem::permissions(recordPath(path()), std::filesystem::perms::owner_all);
    survey.SiteData(kEM1, 2999) = std::numeric_limits<double>::infinity();
    EXPECT_EQ(failure(), "Overflow");
    expectOldFiles("a number that cannot be written");
}

TEST_F(TransectAndRecord, StayAsTheyWereWhenTheRecordFails) {
    writeOldFiles();
    EXPECT_THROW(
        writeTransectFileAndRecord(
            survey, path(), {}, [](const WrittenFile&) -> std::string { throw RunTimeError::outOfMemory(); }),
        RunTimeError);
    expectOldFiles("no memory for the record");
}

}  // namespace tessel
