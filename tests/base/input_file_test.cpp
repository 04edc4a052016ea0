// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/input_file.h"

#include "support/file_calls.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"

#include <sys/inotify.h>

namespace tessel {

namespace {

std::string refusal(const std::string& path) {
    return descriptionOf([&] { ::close(openInputFile(path).descriptor); });
}

using InputFileTest = FolderTest;

}  // namespace

TEST_F(InputFileTest, IsOpenedWithItsSize) {
    writeFile(folder / "a.dat", "12345");
    std::filesystem::create_symlink(folder / "a.dat", folder / "link.dat");
    EXPECT_TRUE(isInputFile(folder / "link.dat"));
    const InputFile file = openInputFile(folder / "link.dat");
    EXPECT_EQ(file.size, 5);
    EXPECT_EQ(static_cast<const FileState&>(file), stateOfInputFile(folder / "a.dat"));
    EXPECT_EQ(file.modified,
              std::chrono::file_clock::to_sys(std::filesystem::last_write_time(folder / "a.dat")));
    ::close(file.descriptor);
}

TEST_F(InputFileTest, IsNoDeviceNoPipeNoFolderAndNothingOfTheKernels) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("/proc/self/status", folder / "status");
    const std::pair<std::string, std::string> cases[] = {
        {"/dev/zero", " cannot be read: it is not a regular file"},
        {folder / "pipe", " cannot be read: it is not a regular file"},
        {folder.path(), " cannot be read: it is a folder"},
        {folder / "status", " cannot be read: it is a file of the system's own"},
        {"/sys/kernel/notes", " cannot be read: it is a file of the system's own"},
        {"/nowhere", " cannot be opened: No such file or directory"}};
    for (const auto& [file, reason] : cases) {
        EXPECT_EQ(refusal(file), file + reason);
        EXPECT_FALSE(isInputFile(file)) << file;
    }
}

TEST_F(InputFileTest, IsRefusedBeforeItIsOpened) {
    const std::string pipe = folder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const int openings = ::inotify_init1(IN_NONBLOCK);
    ASSERT_GE(::inotify_add_watch(openings, pipe.c_str(), IN_OPEN), 0);
    EXPECT_NE(refusal(pipe), "no error");
    EXPECT_FALSE(isInputFile(pipe));
    inotify_event opened{};
    EXPECT_EQ(::read(openings, &opened, sizeof opened), -1);
    EXPECT_EQ(errno, EAGAIN);
    ::close(openings);
}

TEST_F(InputFileTest, IsOpenedThoughASignalInterruptsEveryCall) {
    writeFile(folder / "a.dat", "12345");
    bool isInterrupted = false;
    const WatchedFileCalls watched([&](const FileCall& call) -> std::optional<FileAnswer> {
        if (call.name != "stat" && call.name != "open") return std::nullopt;
        isInterrupted = !isInterrupted;
        return isInterrupted ? std::optional(FileAnswer{-1, EINTR}) : std::nullopt;
    });
    EXPECT_EQ(refusal(folder / "a.dat"), "no error");
    EXPECT_EQ(watched.count("open"), 2);
}

TEST_F(InputFileTest, OfATimeBeyondTheClockIsOfItsFurthestSecond) {
    writeFile(folder / "a.dat", "12345");
    const auto modifiedAt = [&](std::time_t seconds) {
        const timespec times[] = {{seconds, 999999999}, {seconds, 999999999}};
        EXPECT_EQ(::utimensat(AT_FDCWD, (folder / "a.dat").c_str(), times, 0), 0);
        return stateOfInputFile(folder / "a.dat").modified;
    };
    // A file system may keep a nearer time itself.
    constexpr std::time_t kYear = 31556952;
    const auto now = std::chrono::system_clock::now();
    EXPECT_GT(modifiedAt(330 * kYear), now);
    EXPECT_GT(modifiedAt(470 * kYear), now);
    EXPECT_LT(modifiedAt(-330 * kYear), std::chrono::system_clock::time_point());
}

TEST_F(InputFileTest, GivesItsFirstBytes) {
    writeFile(folder / "a.dat", "12345");
    EXPECT_EQ(readFirstBytes(folder / "a.dat", 3), "123");
    EXPECT_EQ(readFirstBytes(folder / "a.dat", 9), "12345");
}

}  // namespace tessel
