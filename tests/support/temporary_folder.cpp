// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/temporary_folder.h"

#include "base/file_replacement.h"

namespace tessel {

TemporaryFolder::TemporaryFolder()
    : path_((std::filesystem::temp_directory_path() / "tessel-test-XXXXXX").string()) {
    if (::mkdtemp(path_.data()) == nullptr) ADD_FAILURE() << "no temporary folder";
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::size_t filesIn(const TemporaryFolder& folder) {
    const std::filesystem::directory_iterator files(folder.path());
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

void writeFile(const std::string& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    EXPECT_TRUE(file.flush()) << path;
}

void replaceFile(const std::string& path, std::string_view bytes) {
    FileReplacement file(path);
    file.write(bytes);
    file.commit();
}

void FolderTest::expectOldFileAlone() const {
    EXPECT_EQ(readFile(path), "old");
    EXPECT_EQ(filesIn(folder), 1U);
}

}  // namespace tessel
