// SPDX-License-Identifier: GPL-3.0-or-later
// The settings file: whatever its bytes, an editor and a positive print scale are in force afterwards.
#include "base/session.h"
#include "desktop/editor_settings.h"
#include "fuzz/memory_file.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace tessel {

namespace {

// Removed when the process ends.
struct SettingsFolder {
    std::string path = (std::filesystem::temp_directory_path() / "tessel-fuzz-XXXXXX").string();

    SettingsFolder() { require(::mkdtemp(path.data()) != nullptr); }
    ~SettingsFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    SettingsFolder(const SettingsFolder&) = delete;
    SettingsFolder& operator=(const SettingsFolder&) = delete;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const SettingsFolder folder;
    const std::string input = fuzzInput(data, size);
    const TimeBudget budget(input.size());
    std::ofstream(folder.path + "/VARN_te_fio_info.dat", std::ios::binary)
        .write(input.data(), static_cast<std::streamsize>(input.size()));
    Session session;
    session.AppDir = folder.path;
    ReadTEinfo(session);
    require(session.TextEditor.size() > 1 && session.TextEditor.back() == ' ');
    require(session.PrintScale >= kSmallestPrintScale && session.PrintScale <= kLargestPrintScale);
    return 0;
}

}  // namespace tessel
