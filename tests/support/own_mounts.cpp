// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/own_mounts.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>

namespace tessel {

namespace {

constexpr int kMayNot = 77;

void writeTo(const char* path, const std::string& text) {
    std::ofstream(path) << text;
}

// Root of this process's own mounts; whoever is not root is it among his own users.
bool becomeOwnerOfMounts() {
    const uid_t user = ::geteuid();
    const gid_t group = ::getegid();
    if (::unshare(user == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER) != 0) return false;
    if (user != 0) {
        writeTo("/proc/self/setgroups", "deny");
        writeTo("/proc/self/uid_map", "0 " + std::to_string(user) + " 1");
        writeTo("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
    }
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

}  // namespace

bool runWithOwnMounts(const std::function<void()>& action) {
    const pid_t process = ::fork();
    if (process == 0) {
        if (!becomeOwnerOfMounts()) std::_Exit(kMayNot);
        bool hasFailed = false;
        try {
            action();
        } catch (const std::exception& error) {
            hasFailed = true;
            std::fprintf(stderr, "%s\n", error.what());
        }
        std::fflush(nullptr);
        std::_Exit(hasFailed || testing::Test::HasFailure() ? 1 : 0);
    }
    int end = 0;
    EXPECT_EQ(::waitpid(process, &end, 0), process);
    if (WIFEXITED(end) && WEXITSTATUS(end) == kMayNot) {
        std::fputs("left out: nobody may mount a drive here\n", stderr);
        return false;
    }
    EXPECT_EQ(end, 0) << "the process with its own mounts has failed";
    return true;
}

Drive::Drive(const std::string& folder) : folder_(folder) {
    EXPECT_EQ(::mount("none", folder.c_str(), "tmpfs", 0, "size=4m"), 0) << std::strerror(errno);
    root_ = ::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
}

Drive::~Drive() {
    ::close(root_);
    ::umount2(folder_.c_str(), MNT_DETACH);
}

void Drive::vanish() const {
    EXPECT_EQ(::umount2(folder_.c_str(), MNT_DETACH), 0) << std::strerror(errno);
}

std::string Drive::operator/(std::string_view name) const {
    return "/proc/self/fd/" + std::to_string(root_) + "/" + std::string(name);
}

void Drive::fill(const std::string& name) const {
    std::ofstream file(*this / name, std::ios::binary);
    const std::string block(4096, 'x');
    while (file.write(block.data(), 4096).flush()) {
    }
}

void Drive::makeReadOnly() const {
    EXPECT_EQ(::mount("none", folder_.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, "size=4m"), 0)
        << std::strerror(errno);
}

}  // namespace tessel
