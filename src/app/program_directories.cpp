#include "app/program_directories.h"

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

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
