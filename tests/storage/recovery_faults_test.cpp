// SPDX-License-Identifier: GPL-3.0-or-later
// What fails while the work is kept: the work goes on, the user is told once, what was whole stays, and all
// is kept again as soon as that can be. What fails at an act: tests/program/EveryWrittenFile_test.cpp.
#include "storage/recovery_file.h"
#include "storage/recovery_keeper.h"
#include "support/file_calls.h"
#include "support/made_survey.h"
#include "support/temporary_folder.h"
#include "support/unprivileged_user.h"

namespace tessel {

namespace {

namespace fs = std::filesystem;

using Answer = std::optional<FileAnswer>;

// A program that works, and keeps what it does in a folder.
struct Work {
    explicit Work(const std::string& folder)
        : keeper(folder, [this](const std::string& problem) { told.push_back(problem); }) {
        journal.watch([this](JournalEvent event) { keeper.follow(event, journal, {}); });
    }
    void act() {
        const SiteIndex sites = 2 + static_cast<SiteIndex>(journal.size());
        journal.replaceSurvey({}, surveyOfReadings(
                                      sites, [](SiteIndex i) { return static_cast<double>(i); },
                                      [](SiteIndex) { return 1.0; }));
    }

    Journal journal{std::size_t{1} << 30};
    std::vector<std::string> told;
    RecoveryKeeper keeper;
};

class RecoveryFaults : public testing::Test {
  protected:
    std::vector<std::string> kept() const {
        std::vector<std::string> paths;
        for (fs::directory_iterator file(place), end; file != end; ++file)
            paths.push_back(file->path().string());
        return paths;
    }
    // How many acts the next program finds of one that is ended now: 0 for nothing.
    std::size_t actsKept(const Work& work) const {
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
    void expectKeptAgain(Work& work) {
        work.told.clear();
        work.act();
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
        Work work(place);
        {
            calls = 0;
            const WatchedFileCalls watched([&](const FileCall&) -> Answer {
                return ++calls == faulty ? Answer(FileAnswer{-1, EIO}) : std::nullopt;
            });
            work.act();
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
        Work work(place);
        std::size_t told = 0, done = 0;
        {
            calls = 0;
            const WatchedFileCalls watched([&](const FileCall&) -> Answer {
                return ++calls > last ? Answer(FileAnswer{-1, ENOTCONN}) : std::nullopt;
            });
            for (std::size_t acts = 1; acts <= kActs; ++acts) {
                work.act();
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
        Work work(place);
        work.act();
        work.act();
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
        Work work(place);
        work.act();
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
    Work work(place);
    work.act();
    ::umask(before);
    EXPECT_EQ(fs::status(place).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(kept().at(0)).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(RecoveryFaults, AreNotThatItsFileIsTakenAwayUnderIt) {
    Work work(place);
    work.act();
    fs::remove(kept().at(0));
    work.act();
    work.act();
    EXPECT_EQ(actsKept(work), 3U);
    EXPECT_TRUE(work.told.empty());
}

}  // namespace tessel
