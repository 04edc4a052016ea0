// SPDX-License-Identifier: GPL-3.0-or-later
// Two files that are replaced together: both are new or both are as they were, whatever fails.
#include "base/file_replacement.h"
#include "support/file_calls.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

using Answer = std::optional<FileAnswer>;

// What is there before, and on what file system.
struct Situation {
    bool firstExists, secondExists, namelessFiles, secondNames;
};

class JointReplacement : public testing::TestWithParam<Situation> {
  protected:
    JointReplacement() {
        restore();
        before = bothFiles();
    }

    std::string first() const { return folder / "field.record.yaml"; }
    std::string second() const { return folder / "field.txt"; }

    void replaceBoth() const {
        FileReplacement one(first()), other(second());
        one.write("new first");
        other.write("new second");
        FileReplacement::commitTogether(one, other);
    }

    static std::string contents(const std::string& path) {
        return std::filesystem::exists(path) ? readFile(path) : "none";
    }
    std::string bothFiles() const { return contents(first()) + ", " + contents(second()); }

    // As the file system answers by itself.
    static Answer ofTheFileSystem(const FileCall& call) {
        if (!GetParam().namelessFiles && noNamelessFiles(call)) return noNamelessFiles(call);
        const bool isSecondName = call.name == "linkat" && !call.path.starts_with("/proc/");
        if (!GetParam().secondNames && isSecondName) return FileAnswer{-1, EPERM};
        return std::nullopt;
    }

    // What is told when this call (from 1) fails, and all of its name behind it; "" for no error.
    std::string failureOf(long failing, bool andAllOfItsNameBehind = false) const {
        long calls = 0;
        std::string name;
        const WatchedFileCalls watched([&](const FileCall& call) -> Answer {
            const bool isIt = ++calls == failing;
            if (isIt) name = call.name;
            const bool fails = isIt || (andAllOfItsNameBehind && calls > failing && call.name == name);
            return fails ? Answer(FileAnswer{-1, EIO}) : ofTheFileSystem(call);
        });
        const std::string failure = descriptionOf([this] { replaceBoth(); });
        return failure != "no error" ? failure : calls < failing ? "over" : "";
    }

    void restore() const {
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            std::filesystem::remove(entry);
        if (GetParam().firstExists) writeFile(first(), "old first");
        if (GetParam().secondExists) writeFile(second(), "old second");
    }

    const TemporaryFolder folder;
    std::string before;
};

constexpr const char* kBothNew = "new first, new second";

}  // namespace

TEST_P(JointReplacement, PutsBothInPlaceAndLeavesNothingElse) {
    const WatchedFileCalls watched(ofTheFileSystem);
    replaceBoth();
    EXPECT_EQ(bothFiles(), kBothNew);
    EXPECT_EQ(filesIn(folder), 2U);
    EXPECT_EQ(watched.calls().back().name, "fsync");
}

TEST_P(JointReplacement, LeavesBothAsTheyWereWhicheverCallFails) {
    int refused = 0;
    for (long failing = 1;; ++failing) {
        restore();
        const std::string failure = failureOf(failing);
        if (failure == "over") break;
        const bool areInPlace = failure.empty() || failure.find("has been written") != std::string::npos;
        EXPECT_EQ(bothFiles(), areInPlace ? kBothNew : before) << failing << ": " << failure;
        EXPECT_LE(filesIn(folder), 2U) << failing << ": " << failure;
        refused += !areInPlace;
    }
    EXPECT_GE(refused, 10);
}

TEST_P(JointReplacement, SaysWhereTheOldFileIsWhenItCannotBePutBack) {
    restore();
    long calls = 0, last = 0;
    {
        const WatchedFileCalls watched([&](const FileCall& call) {
            ++calls;
            if (call.name == "rename") last = calls;
            return ofTheFileSystem(call);
        });
        replaceBoth();
    }
    restore();
    const std::string failure = failureOf(last, true);
    ASSERT_NE(failure.find("field.txt cannot be written: Input/output error"), std::string::npos);
    EXPECT_EQ(contents(second()), GetParam().secondExists ? "old second" : "none");
    if (!GetParam().firstExists) {
        EXPECT_EQ(bothFiles(), before);
        return;
    }
    const std::string told = "field.record.yaml is the new one all the same, the old one lies in ";
    const std::size_t at = failure.find(told);
    ASSERT_NE(at, std::string::npos) << failure;
    const std::string aside = failure.substr(at + told.size());
    EXPECT_EQ(readFile(aside), "old first");
    EXPECT_EQ(aside, first() + ".old-1") << "under a name of a leftover it would be removed later";
    EXPECT_EQ(filesIn(folder), GetParam().secondExists ? 3U : 2U);
}

TEST_P(JointReplacement, LeavesAnEarlierOldFileAlone) {
    writeFile(first() + ".old-1", "older");
    replaceBoth();
    for (long failing = 1;; ++failing) {
        restore();
        writeFile(first() + ".old-1", "older");
        if (failureOf(failing, true) == "over") break;
        EXPECT_EQ(readFile(first() + ".old-1"), "older") << failing;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Situations, JointReplacement,
    testing::Values(Situation{true, true, true, true}, Situation{false, false, true, true},
                    Situation{true, false, true, true}, Situation{false, true, true, true},
                    Situation{true, true, false, true}, Situation{true, true, false, false},
                    Situation{false, false, false, false}, Situation{true, true, true, false}));

TEST(ReplacedTogether, AFileOfSeveralNamesIsRefused) {
    const TemporaryFolder folder;
    writeFile(folder / "one.txt", "old one");
    writeFile(folder / "other.txt", "old other");
    ASSERT_EQ(::link((folder / "other.txt").c_str(), (folder / "second name.txt").c_str()), 0);
    for (const bool swapped : {false, true}) {
        FileReplacement one(folder / "one.txt"), other(folder / "other.txt");
        one.write("new");
        other.write("new");
        EXPECT_EQ(
            descriptionOf(
                [&] { FileReplacement::commitTogether(swapped ? other : one, swapped ? one : other); }),
            folder /
                "other.txt cannot be replaced together with another file: it has several names (hard links)");
        EXPECT_EQ(readFile(folder / "one.txt"), "old one");
        EXPECT_EQ(readFile(folder / "second name.txt"), "old other");
    }
}

TEST(ReplacedTogether, OneFileUnderTwoNamesIsRefused) {
    for (const bool exists : {false, true}) {
        const TemporaryFolder folder;
        if (exists) writeFile(folder / "field.txt", "old");
        std::filesystem::create_symlink("./field.txt", folder / "field.record.yaml");
        FileReplacement record(folder / "field.record.yaml"), field(folder / "field.txt");
        EXPECT_EQ(descriptionOf([&] { FileReplacement::commitTogether(record, field); }),
                  folder /
                      "field.txt cannot be replaced together with another file: "
                      "the name of the other one leads to it too");
        EXPECT_EQ(std::filesystem::exists(folder / "field.txt"), exists);
        if (exists) {
            EXPECT_EQ(readFile(folder / "field.txt"), "old");
        }
    }
}

TEST(ReplacedTogether, AFileThatComesBackIsTheSameFile) {
    const TemporaryFolder folder;
    writeFile(folder / "one.txt", "old one");
    struct stat old {};
    ASSERT_EQ(::stat((folder / "one.txt").c_str(), &old), 0);
    int renames = 0;
    const WatchedFileCalls watched([&](const FileCall& call) -> Answer {
        return call.name == "rename" && ++renames == 2 ? Answer(FileAnswer{-1, EIO}) : std::nullopt;
    });
    FileReplacement one(folder / "one.txt"), other(folder / "other.txt");
    EXPECT_THROW(FileReplacement::commitTogether(one, other), RunTimeError);
    EXPECT_EQ(renames, 3);
    struct stat now {};
    ASSERT_EQ(::stat((folder / "one.txt").c_str(), &now), 0);
    EXPECT_EQ(now.st_ino, old.st_ino);
    EXPECT_EQ(now.st_mtim.tv_nsec, old.st_mtim.tv_nsec);
}

}  // namespace tessel
