// SPDX-License-Identifier: GPL-3.0-or-later
// What fails while the work is kept: the work goes on, the user is told once, what was whole stays, and all
// is kept again as soon as that can be. What fails at an act: tests/program/EveryWrittenFile_test.cpp.
#include "storage/recovery_file.h"
#include "storage/recovery_worker.h"
#include "support/file_calls.h"
#include "support/temporary_folder.h"
#include "support/unprivileged_user.h"

namespace tessel {

namespace {

namespace fs = std::filesystem;

using Answer = std::optional<FileAnswer>;

class RecoveryFaults : public testing::Test {
  protected:
    std::vector<std::string> kept() const {
        std::vector<std::string> paths;
        for (fs::directory_iterator file(place), end; file != end; ++file)
            paths.push_back(file->path().string());
        return paths;
    }
    // How many acts the next program finds of one that is ended now: 0 for nothing.
    std::size_t actsKept(const Worker& work) const {
        std::size_t acts = 0;
        for (const std::string& path : kept()) {
            const TemporaryFolder copy;
            fs::copy(path, copy / "recovery-1-0");
            for (const LeftWork& left : findLeftWork(copy.path()))
                acts += left.read().journal.size();
        }
        EXPECT_LE(acts, work.journal.size());
        return acts;
    }
    void expectKeptAgain(Worker& work) {
        work.told.clear();
        work.import(5);
        EXPECT_TRUE(work.keeper.isKeeping());
        EXPECT_EQ(actsKept(work), work.journal.size());
        EXPECT_EQ(kept().size(), 1U) << "the old one goes when the new one is whole";
    }

    const TemporaryFolder folder;
    const std::string place = folder / "state";
};

}  // namespace

TEST_F(RecoveryFaults, AtAnyCallOfTheBeginningLeaveNothingHalf) {
    int failures = 0;
    for (long calls = 0, faulty = 1; calls >= faulty - 1; ++faulty) {
        SCOPED_TRACE(faulty);
        fs::remove_all(place);
        fs::create_directory(place);
        Worker work(place);
        {
            calls = 0;
            const WatchedFileCalls watched([&](const FileCall&) -> Answer {
                return ++calls == faulty ? Answer(FileAnswer{-1, EIO}) : std::nullopt;
            });
            work.import(5);
        }
        EXPECT_EQ(work.told.empty() ? 1U : 0U, actsKept(work));
        EXPECT_EQ(work.told.empty(), work.keeper.isKeeping());
        failures += !work.told.empty();
        expectKeptAgain(work);
        EXPECT_TRUE(work.told.empty() || work.told == std::vector<std::string>{""});
    }
    EXPECT_GE(failures, 4);
}

TEST_F(RecoveryFaults, OfADriveThatGoesAtAnyMomentAreToldOnceAndLoseNothingThatWasKept) {
    constexpr std::size_t kActs = 3;
    for (long calls = 0, last = 0; calls >= last; ++last) {
        SCOPED_TRACE(last);
        fs::remove_all(place);
        fs::create_directory(place);
        Worker work(place);
        std::size_t told = 0, done = 0;
        {
            calls = 0;
            const WatchedFileCalls watched([&](const FileCall&) -> Answer {
                return ++calls > last ? Answer(FileAnswer{-1, ENOTCONN}) : std::nullopt;
            });
            for (std::size_t acts = 1; acts <= kActs; ++acts) {
                work.import(5);
                if (work.told.empty()) done = acts;
            }
            told = work.told.size();
        }
        EXPECT_EQ(work.journal.size(), kActs);
        EXPECT_EQ(told, done < kActs ? 1U : 0U);
        EXPECT_GE(actsKept(work), done);
        expectKeptAgain(work);
    }
}

TEST_F(RecoveryFaults, OfTheFolderAreToldWithItsPath) {
    fs::permissions(folder.path(), fs::perms::all);
    const UnprivilegedUser user;
    const std::pair<const char*, std::function<void()>> obstacles[] = {
        {"Not a directory", [this] { writeFile(place, "somebody's"); }},
        {"Permission denied",
         [this] { fs::create_directory(place), fs::permissions(place, fs::perms(0555)); }},
        {"Permission denied",
         [this] { fs::create_directory(place), fs::permissions(place, fs::perms::none); }},
        {"No such file or directory", [this] { fs::create_symlink("gone/away", place); }}};
    for (const auto& [reason, put] : obstacles) {
        put();
        Worker work(place);
        work.import(5);
        work.import(5);
        ASSERT_EQ(work.told.size(), 1U) << reason;
        EXPECT_TRUE(work.told[0].starts_with(place + "/")) << work.told[0];
        EXPECT_TRUE(work.told[0].ends_with(std::string(" cannot be written: ") + reason)) << work.told[0];
        if (fs::exists(place)) fs::permissions(place, fs::perms::owner_all);
        fs::remove_all(place);
        expectKeptAgain(work);
        work.keeper.discard();
        fs::remove_all(place);
    }
}

TEST_F(RecoveryFaults, AreNotWhatStandsUnderItsName) {
    fs::create_directory(place);
    const std::string taken = place + "/recovery-" + std::to_string(::getpid()) + "-";
    writeFile(folder / "mine.txt", "the user's");
    fs::create_symlink(folder / "mine.txt", taken + "0");
    fs::create_symlink(folder / "not there", taken + "1");
    ASSERT_EQ(::mkfifo((taken + "2").c_str(), 0600), 0);
    fs::create_directory(taken + "3");
    {
        Worker work(place);
        work.import(5);
        EXPECT_TRUE(work.told.empty());
        EXPECT_TRUE(fs::is_regular_file(taken + "4"));
    }
    EXPECT_EQ(findLeftWork(place).size(), 1U) << "and none of them is offered or removed";
    EXPECT_EQ(kept().size(), 5U);
    EXPECT_EQ(readFile(folder / "mine.txt"), "the user's");
    EXPECT_FALSE(fs::exists(folder / "not there"));
}

TEST_F(RecoveryFaults, AreNotThatOthersReadIt) {
    const mode_t before = ::umask(0);
    Worker work(place);
    work.import(5);
    ::umask(before);
    EXPECT_EQ(fs::status(place).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(kept().at(0)).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(RecoveryFaults, AreNotThatSomebodyTakesItsFileOrItsFolderAway) {
    Worker work(place);
    for (const bool folderToo : {false, true}) {
        work.import(5);
        folderToo ? fs::remove_all(place) : fs::remove(kept().at(0));
        work.import(5);
        EXPECT_EQ(actsKept(work), work.journal.size());
        EXPECT_TRUE(work.keeper.isKeeping());
    }
    EXPECT_TRUE(work.told.empty());
}

}  // namespace tessel
