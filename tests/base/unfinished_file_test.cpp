// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/unfinished_file.h"

#include "base/file_replacement.h"
#include "support/failing_allocations.h"
#include "support/file_calls.h"
#include "support/temporary_folder.h"
#include "support/unprivileged_user.h"

#include <sys/file.h>
#include <sys/wait.h>

namespace tessel {

namespace {

namespace fs = std::filesystem;

// A process that has ended: nobody has its number.
pid_t endedProcess() {
    const pid_t process = ::fork();
    if (process == 0) ::_exit(0);
    EXPECT_EQ(::waitpid(process, nullptr, 0), process);
    return process;
}

std::string nameOf(pid_t process, int number) {
    return ".tessel-" + std::to_string(process) + '-' + std::to_string(number);
}

// A program that is in the middle of writing `path`, on a file system without nameless files.
class WritingProgram {
  public:
    explicit WritingProgram(const std::string& path) {
        std::array<int, 2> ready{};
        EXPECT_EQ(::pipe2(ready.data(), O_CLOEXEC), 0);
        process_ = ::fork();
        if (process_ == 0) write(path, ready[1]);
        char byte = 0;
        EXPECT_EQ(::read(ready[0], &byte, 1), 1);
        ::close(ready[0]);
        ::close(ready[1]);
    }
    ~WritingProgram() { kill(); }
    WritingProgram(const WritingProgram&) = delete;
    WritingProgram& operator=(const WritingProgram&) = delete;

    pid_t process() const { return process_; }
    void kill() {
        if (process_ == 0) return;
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
        process_ = 0;
    }

  private:
    [[noreturn]] static void write(const std::string& path, int ready) {
        const WatchedFileCalls watched(noNamelessFiles);
        FileReplacement file(path);
        file.write(std::string(1'000'000, 'x'));
        if (::write(ready, "!", 1) != 1) ::_exit(1);
        for (;;)
            ::pause();
    }
    pid_t process_;
};

using Leftovers = FolderTest;
using UnfinishedFileTest = FolderTest;

}  // namespace

TEST_F(Leftovers, OfAKilledProgramAreRemovedWhenSomethingIsWrittenNext) {
    WritingProgram program(path);
    const std::string name = nameOf(program.process(), 0);
    EXPECT_TRUE(fs::exists(folder / name));
    replaceFile(folder / "other.txt");
    EXPECT_TRUE(fs::exists(folder / name));
    program.kill();
    replaceFile(folder / "other.txt");
    EXPECT_FALSE(fs::exists(folder / name));
    EXPECT_EQ(filesIn(folder), 1U);
}

TEST_F(Leftovers, OfEitherKindOfNameAreRemoved) {
    writeFile(folder / nameOf(endedProcess(), 12), "half");
    writeFile(folder / ".tessel-aB3xYz", "half");
    replaceFile(path);
    EXPECT_EQ(filesIn(folder), 1U);
}

TEST_F(Leftovers, AreLookedForWithoutMemoryTooOrNotAtAll) {
    writeFile(folder / ".tessel-aB3xYz", "half");
    bool done = false;
    for (long successes = 0; !done && successes < 100; ++successes) {
        try {
            const FailingAllocations failing(successes);
            removeLeftovers(folder.path());
            done = !failing.hasFailed();
        } catch (const std::bad_alloc&) {
            continue;
        }
    }
    EXPECT_TRUE(done);
    EXPECT_FALSE(fs::exists(folder / ".tessel-aB3xYz"));
}

TEST_F(Leftovers, AreNotWhatAProcessLocksOrItsLivingProcessNames) {
    writeFile(folder / ".tessel-aB3xYz", "held");
    const int held = ::open((folder / ".tessel-aB3xYz").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    writeFile(folder / nameOf(::getpid(), 7), "living");
    writeFile(folder / nameOf(::getppid(), 7), "living");
    replaceFile(path);
    EXPECT_EQ(filesIn(folder), 4U);
    ::close(held);
    replaceFile(path);
    EXPECT_FALSE(fs::exists(folder / ".tessel-aB3xYz"));
    EXPECT_EQ(filesIn(folder), 3U);
}

TEST_F(Leftovers, AreOnlyOrdinaryFilesOfExactlyTheseNames) {
    const std::string process = ".tessel-" + std::to_string(endedProcess());
    for (const char* name : {".tessel-aB3xY", ".tessel-aB3xYzz", ".tessel-aB_xYz", "tessel-aB3xYz",
                             ".tessel-", ".tessel-1x-0", ".tessel--1-0"})
        writeFile(folder / name, "the user's");
    for (const char* end : {"-", "-x", "-0x", "--0"})
        writeFile(folder / (process + end), "the user's");
    fs::create_directory(folder / ".tessel-folder");
    writeFile(folder / "real.txt", "the user's");
    fs::create_symlink(folder / "real.txt", folder / ".tessel-alinks");
    ASSERT_EQ(::mkfifo((folder / ".tessel-apipes").c_str(), 0600), 0);
    const std::size_t before = filesIn(folder);
    replaceFile(path);
    EXPECT_EQ(filesIn(folder), before + 1);
}

TEST_F(Leftovers, OfAnotherUserAreLeftToHim) {
    fs::permissions(folder.path(), fs::perms::all);
    writeFile(folder / ".tessel-aB3xYz", "root's");
    fs::permissions(folder / ".tessel-aB3xYz", fs::perms::owner_read);
    const UnprivilegedUser user;
    replaceFile(path);
    if (::geteuid() == 0) return;
    EXPECT_TRUE(fs::exists(folder / ".tessel-aB3xYz"));
}

TEST_F(Leftovers, OnOtherMachinesAreRemovedWhenTheyAreADayOld) {
    constexpr long kFuse = 0x65735546;
    writeFile(folder / ".tessel-aYoung", "half");
    writeFile(folder / ".tessel-anOld1", "half");
    fs::last_write_time(folder / ".tessel-anOld1", fs::file_time_type::clock::now() - std::chrono::hours(25));
    const WatchedFileCalls watched([](const FileCall& call) -> std::optional<FileAnswer> {
        return call.name == "statfs" ? std::optional(FileAnswer{0, 0, kFuse}) : std::nullopt;
    });
    replaceFile(path);
    EXPECT_TRUE(fs::exists(folder / ".tessel-aYoung"));
    EXPECT_FALSE(fs::exists(folder / ".tessel-anOld1"));
}

TEST_F(Leftovers, AreLeftAloneWhereThereAreNoLocks) {
    writeFile(folder / ".tessel-aB3xYz", "perhaps somebody's");
    const WatchedFileCalls watched([](const FileCall& call) -> std::optional<FileAnswer> {
        if (const auto answer = noNamelessFiles(call)) return answer;
        return call.name == "flock" ? std::optional(FileAnswer{-1, ENOLCK}) : std::nullopt;
    });
    replaceFile(path);
    EXPECT_EQ(readFile(path), "new");
    EXPECT_TRUE(fs::exists(folder / ".tessel-aB3xYz"));
}

TEST_F(UnfinishedFileTest, TakesAnotherNameWhenItIsTakenForALeftoverBeforeItIsLocked) {
    for (const auto& [removed, held] : {std::pair(true, true), {true, false}, {false, true}}) {
        int locks = 0;
        const WatchedFileCalls watched(
            [&, removed = removed, held = held](const FileCall& call) -> std::optional<FileAnswer> {
                if (const auto answer = noNamelessFiles(call)) return answer;
                if (call.name != "flock" || ++locks > 1) return std::nullopt;
                // By another program, between opening and locking.
                if (removed) fs::remove(folder / nameOf(::getpid(), 0));
                return held ? std::optional(FileAnswer{-1, EWOULDBLOCK}) : std::nullopt;
            });
        UnfinishedFile file;
        ASSERT_TRUE(file.open(folder.path(), 0600));
        EXPECT_TRUE(fs::exists(file.name()));
        EXPECT_EQ(locks, 2);
        fs::remove(folder / nameOf(::getpid(), 0));
    }
    EXPECT_EQ(filesIn(folder), 0U);
}

TEST_F(UnfinishedFileTest, TakesAnotherNameWhereAFileHasTheOneItWanted) {
    writeFile(folder / nameOf(::getpid(), 0), "the user's");
    const WatchedFileCalls watched(noNamelessFiles);
    UnfinishedFile file;
    ASSERT_TRUE(file.open(folder.path(), 0600));
    EXPECT_EQ(file.name(), folder / nameOf(::getpid(), 1));
}

TEST_F(UnfinishedFileTest, IsLockedAsLongAsItIsOpen) {
    const WatchedFileCalls watched(noNamelessFiles);
    UnfinishedFile file;
    ASSERT_TRUE(file.open(folder.path(), 0600));
    const int second = ::open(file.name().c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_NE(::flock(second, LOCK_EX | LOCK_NB), 0);
    file.nameIsTaken();
    file.discard();
    EXPECT_EQ(::flock(second, LOCK_EX | LOCK_NB), 0);
    ::close(second);
}

}  // namespace tessel
