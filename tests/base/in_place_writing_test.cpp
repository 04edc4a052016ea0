// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/in_place_writing.h"

#include "base/file_replacement.h"
#include "support/environment.h"
#include "support/file_calls.h"
#include "support/file_size_limit.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"
#include "support/unprivileged_user.h"

#include <sys/file.h>

namespace tessel {

namespace {

namespace fs = std::filesystem;

using Answer = std::optional<FileAnswer>;

// A file of two names, which is written in place, with an old text of 400,000 bytes.
class InPlace : public FolderTest {
  protected:
    InPlace() {
        writeFile(path, old);
        fs::create_hard_link(path, folder / "second.txt");
    }
    // What is told when the calls are answered like this.
    std::string told(const std::string& text, const WatchedFileCalls::Answerer& answerer) {
        const WatchedFileCalls watched(answerer);
        return descriptionOf([&] { replaceFile(path, text); });
    }

    const std::string old = std::string(400'000, 'o');
    const std::string longer = std::string(900'000, 'n');
    const std::string shorter = std::string(300'000, 'n');
};

}  // namespace

TEST_F(InPlace, KeepsAllNamesOfAFile) {
    for (const std::string& text : {longer, shorter, std::string(), std::string("x")}) {
        replaceFile(path, text);
        EXPECT_EQ(readFile(folder / "second.txt"), text);
        EXPECT_EQ(fs::hard_link_count(path), 2U);
        EXPECT_EQ(filesIn(folder), 2U);
    }
}

TEST_F(InPlace, WritesNothingBeforeItIsCommitted) {
    {
        FileReplacement file(path);
        file.write(longer);
    }
    EXPECT_EQ(readFile(path), old);
}

TEST_F(InPlace, LooksForRoomFirst) {
    EXPECT_EQ(told(longer, failing("fallocate", ENOSPC)),
              path + " cannot be written: No space left on device; the file is as it was");
    EXPECT_EQ(readFile(path), old);
    {
        const FileSizeLimit limit(500'000);
        EXPECT_EQ(descriptionOf([&] { replaceFile(path, std::string(499'999, 'x')); }), "no error");
    }
    EXPECT_EQ(filesIn(folder), 2U);
}

TEST_F(InPlace, LooksAtTheFreeBlocksWhereRoomCannotBeReserved) {
    const auto withBlocks = [](long blocks) {
        return [blocks](const FileCall& call) -> Answer {
            if (call.name == "fallocate") return FileAnswer{-1, EOPNOTSUPP};
            return call.name == "fstatvfs" ? Answer(FileAnswer{0, 0, blocks}) : std::nullopt;
        };
    };
    EXPECT_EQ(told(longer, withBlocks(100)),
              path + " cannot be written: No space left on device; the file is as it was");
    EXPECT_EQ(readFile(path), old);
    EXPECT_EQ(told(shorter, withBlocks(0)), "no error");  // there is room where the old text was
    EXPECT_EQ(told(longer, withBlocks(1000)), "no error");
    EXPECT_EQ(readFile(path), longer);
}

TEST_F(InPlace, SaysWhatIsLeftWhenTheDiskFailsHalfway) {
    const auto failingAt = [](int nth, int error) {
        return [nth, error, writes = 0](const FileCall& call) mutable -> Answer {
            if (call.name != "pwrite" || ++writes < nth) return std::nullopt;
            return error == 0 ? FileAnswer{0, 0} : FileAnswer{-1, error};
        };
    };
    EXPECT_EQ(told(longer, failingAt(1, EIO)),
              path + " cannot be written: Input/output error; the file is as it was");
    EXPECT_EQ(readFile(path), old);
    EXPECT_EQ(told(longer, failingAt(2, EIO)),
              path +
                  " cannot be written: Input/output error; "
                  "262144 bytes of the new text are in the file, what follows is the old one's");
    EXPECT_EQ(readFile(path), longer.substr(0, 262'144) + old.substr(262'144));
    EXPECT_EQ(
        told(longer, failingAt(3, 0)),
        path + " cannot be written: No space left on device; 524288 bytes of the new text are in the file");
    EXPECT_EQ(readFile(path), longer.substr(0, 524'288));
}

TEST_F(InPlace, SaysWhatIsLeftWhenTheEndFails) {
    EXPECT_EQ(told(shorter, failing("ftruncate", EIO)),
              path +
                  " cannot be written: Input/output error; "
                  "it holds the new text, followed by the end of the old one");
    EXPECT_EQ(readFile(path), shorter + old.substr(shorter.size()));
    EXPECT_EQ(told(longer, failing("fsync", EIO)),
              path +
                  " cannot be written: Input/output error; it holds the new text, which a power cut may "
                  "take away");
    EXPECT_EQ(readFile(path), longer);
}

TEST_F(InPlace, IsNotMixedWithWhatAnotherProgramWrites) {
    const int other = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    EXPECT_EQ(descriptionOf([&] { replaceFile(path, longer); }),
              path + " cannot be written: another program is writing it just now");
    EXPECT_EQ(readFile(path), old);
    ::close(other);
    replaceFile(path, longer);
    EXPECT_EQ(readFile(path), longer);
    EXPECT_EQ(told(shorter, failing("flock", ENOLCK)), "no error");
    EXPECT_EQ(readFile(path), shorter);
}

TEST_F(InPlace, SaysWhereThereIsNoRoomToMakeTheTextReadyWhenItsFolderMayNotBeWritten) {
    fs::create_directory(folder / "tmp");
    fs::permissions(folder / "tmp", fs::perms(0555));
    fs::permissions(folder.path(), fs::perms(0555));
    fs::permissions(path, fs::perms(0666));
    const Environment elsewhere("TMPDIR", folder / "tmp");
    {
        const UnprivilegedUser user;
        EXPECT_EQ(descriptionOf([&] { replaceFile(path); }),
                  path + " cannot be written: Permission denied in " + (folder / "tmp") +
                      ", where it is made ready");
    }
    fs::permissions(folder.path(), fs::perms::owner_all);
    EXPECT_EQ(readFile(path), old);
}

}  // namespace tessel
