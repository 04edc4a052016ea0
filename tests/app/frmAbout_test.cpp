// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmAbout.h"

#include "app/frmMain.h"
#include "base/program_version.h"
#include "support/temporary_folder.h"

namespace tessel {

TEST(ProgramVersion, IsTheSameWhereverItStands) {
    EXPECT_EQ(frmAbout().lblName->text(), QString::fromLatin1(kProgramName));
    EXPECT_TRUE(frmMain().windowTitle().endsWith(frmAbout().lblVersion->text())) << "the suite's";
    const std::string version = kProgramVersion;
    const std::pair<std::string, std::string> places[] = {
        {"CMakeLists.txt", "VERSION " + version + " "},
        {"packaging/CMakeLists.txt", "set(TESSEL_RELEASE " + version + ")"},
        {"packaging/debian/changelog", "varn-tessel (" + version + "-"},
        {"packaging/io.varn.tessel.metainfo.xml", "<release version=\"" + version + "\""},
        {"packaging/varn-tessel.1", "VARN\\-Tessel " + version + "\""},
        {"CHANGELOG.md", "## [" + version + "]"}};
    for (const auto& [file, text] : places)
        EXPECT_NE(readFile(std::string(TESSEL_SOURCE_DIR "/") + file).find(text), std::string::npos) << file;
}

}  // namespace tessel
