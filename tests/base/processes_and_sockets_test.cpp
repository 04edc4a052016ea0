// SPDX-License-Identifier: GPL-3.0-or-later
// The program opens no connection, and starts no process but the text editor, without a shell.
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>

namespace tessel {

namespace {

// The source files, below src, whose text this is found in.
std::vector<std::string> sourcesWith(const std::string& pattern) {
    const std::regex wanted(pattern);
    const std::filesystem::path root = std::string(TESSEL_SOURCE_DIR) + "/src";
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root))
        if (entry.is_regular_file() && std::regex_search(readFile(entry.path()), wanted))
            found.push_back(entry.path().lexically_relative(root));
    std::sort(found.begin(), found.end());
    return found;
}

using Files = std::vector<std::string>;

}  // namespace

TEST(Processes, AreStartedByTheTextEditorAlone) {
    EXPECT_EQ(sourcesWith("QProcess"), Files{"desktop/TextEditor.cpp"});
    EXPECT_EQ(sourcesWith("startDetached"), Files{});
    EXPECT_EQ(sourcesWith("QDesktopServices"), Files{"desktop/TextEditor.cpp"});
}

TEST(Processes, AreStartedWithoutAShell) {
    EXPECT_EQ(sourcesWith("\\b(system|popen|fork|vfork|posix_spawnp?|exec[lv]pe?|execle?) *\\("), Files{});
    EXPECT_EQ(sourcesWith("\\bexecve? *\\("), Files{"desktop/TextEditor.cpp"});
    EXPECT_EQ(sourcesWith("startCommand|/bin/(ba)?sh"), Files{});
}

TEST(Sockets, AreNotOpened) {
    EXPECT_EQ(sourcesWith("QNetwork|QTcp|QUdp|QLocalS|QSsl|QDns|Qt6::Network|sys/socket|\\bsocket *\\("),
              Files{});
}

}  // namespace tessel
