// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/input_file.h"

#include "base/run_time_error.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessel {

namespace {

std::string refusal(const std::string& path) {
    try {
        ::close(openInputFile(path).descriptor);
    } catch (const RunTimeError& error) {
        return error.description();
    }
    return "opened";
}

}  // namespace

TEST(InputFile, IsOpenedWithItsSize) {
    const TemporaryFolder folder;
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

TEST(InputFile, IsNoDeviceNoPipeNoFolderAndNothingOfTheKernels) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("/proc/self/status", folder / "status");
    EXPECT_EQ(refusal("/dev/zero"), "/dev/zero cannot be read: it is not a regular file");
    EXPECT_EQ(refusal(folder / "pipe"), (folder / "pipe") + " cannot be read: it is not a regular file");
    EXPECT_EQ(refusal(folder.path()), folder.path() + " cannot be read: it is a folder");
    EXPECT_EQ(refusal(folder / "status"),
              (folder / "status") + " cannot be read: it is a file of the system's own");
    EXPECT_EQ(refusal("/nowhere"), "/nowhere cannot be opened: No such file or directory");
    for (const std::string& path :
         {std::string("/dev/zero"), folder / "pipe", folder.path(), folder / "status",
          std::string("/sys/kernel/notes"), std::string("/nowhere")})
        EXPECT_FALSE(isInputFile(path)) << path;
}

TEST(InputFile, IsRefusedBeforeItIsOpened) {
    const TemporaryFolder folder;
    const std::string pipe = folder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const int openings = ::inotify_init1(IN_NONBLOCK);
    ASSERT_GE(::inotify_add_watch(openings, pipe.c_str(), IN_OPEN), 0);
    EXPECT_NE(refusal(pipe), "opened");
    EXPECT_FALSE(isInputFile(pipe));
    inotify_event opened{};
    EXPECT_EQ(::read(openings, &opened, sizeof opened), -1);
    EXPECT_EQ(errno, EAGAIN);
    ::close(openings);
}

TEST(InputFile, OfATimeBeyondTheClockIsOfItsFurthestSecond) {
    const TemporaryFolder folder;
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

TEST(InputFile, GivesItsFirstBytes) {
    const TemporaryFolder folder;
    writeFile(folder / "a.dat", "12345");
    EXPECT_EQ(readFirstBytes(folder / "a.dat", 3), "123");
    EXPECT_EQ(readFirstBytes(folder / "a.dat", 9), "12345");
}

}  // namespace tessel
