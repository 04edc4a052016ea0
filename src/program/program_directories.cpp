// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/program_directories.h"

#include "base/session.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace tessel {

namespace fs = std::filesystem;

namespace {

std::string absolutePathIn(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value == '/' ? value : "";
}

std::string folderIn(const char* variable, const char* belowHome) {
    const std::string folder = absolutePathIn(variable);
    const std::string home = absolutePathIn("HOME");
    return !folder.empty() || home.empty() ? folder : home + belowHome;
}

}  // namespace

std::string executableFolder() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path().string();
}

std::string userDataFolder() {
    return folderIn("XDG_DATA_HOME", "/.local/share");
}

std::string userStateFolder() {
    return folderIn("XDG_STATE_HOME", "/.local/state");
}

void findProgramDirectories(Session& session, const std::string& executableDir,
                            const std::string& userDataDir) {
    std::error_code error;
    const fs::path shared = (fs::path(executableDir) / "../share/varn-tessel").lexically_normal();
    const bool installed =
        !fs::is_directory(fs::path(executableDir) / "helpdocs", error) && fs::is_directory(shared, error);
    session.AppDir = installed ? shared.string() : executableDir;
    session.DataDir = session.AppDir;
    if (!installed || userDataDir.empty()) return;
    fs::create_directories(userDataDir, error);
    if (fs::is_directory(userDataDir, error)) session.DataDir = userDataDir;
}

}  // namespace tessel
