// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/editor_settings.h"

#include "base/session.h"
#include "support/temporary_folder.h"
#include "support/unprivileged_user.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace tessel {

namespace {

class EditorSettings : public testing::Test {
  protected:
    Session read() {
        Session session;
        session.AppDir = folder.path();
        session.DataDir = folder / "user";
        session.TextEditor = "something else";
        session.PrintScale = 7;
        refused = ReadTEinfo(session);
        return session;
    }
    Session read(std::string_view settings) {
        writeFile(folder / "VARN_te_fio_info.dat", settings);
        return read();
    }
    static void expectFallback(const Session& session) {
        EXPECT_EQ(session.TextEditor, "c:\\Windows\\write.exe ");
        EXPECT_EQ(session.PrintScale, 1.0);
    }

    TemporaryFolder folder;
    const std::string file = folder / "VARN_te_fio_info.dat";
    std::vector<std::string> refused;
};

}  // namespace

TEST_F(EditorSettings, TakeTheSecondItemAsEditorAndTheSixthAsPrintScale) {
    const Session session = read("1,/usr/bin/gedit,a,b,c,2.0\r\n");
    EXPECT_EQ(session.TextEditor, "/usr/bin/gedit ");
    EXPECT_EQ(session.PrintScale, 2.0);
}

TEST_F(EditorSettings, MayStandOnLinesOfTheirOwn) {
    const Session session = read("one\n/opt/my editor/ed\nthree\nfour\nfive\n4\n");
    EXPECT_EQ(session.TextEditor, "/opt/my editor/ed ");
    EXPECT_EQ(session.PrintScale, 4.0);
}

TEST_F(EditorSettings, MixCommasAndLineEnds) {
    EXPECT_EQ(read("one,/bin/ed\r\nthree,four,five\r\n1").TextEditor, "/bin/ed ");
}

TEST_F(EditorSettings, LoseTheQuotesAroundAnItem) {
    const Session session = read("\"a,b\",\"/opt/ed,itor/x\",\"\",\"\",\"\",\"2\"\n");
    EXPECT_EQ(session.TextEditor, "/opt/ed,itor/x ");
    EXPECT_EQ(session.PrintScale, 2.0);
}

TEST_F(EditorSettings, FallBackWithoutAWordWhenTheFileIsMissing) {
    expectFallback(read());
    EXPECT_TRUE(refused.empty());
}

TEST_F(EditorSettings, KeepAValidEditorWhenTheSixthItemIsMissing) {
    const Session session = read("1,/usr/bin/gedit,a,b,c\n");
    EXPECT_EQ(session.TextEditor, "/usr/bin/gedit ");
    EXPECT_EQ(session.PrintScale, 1.0);
    EXPECT_EQ(refused,
              std::vector<std::string>{file + ": item 6, the printer resolution factor, is missing."});
}

TEST_F(EditorSettings, KeepAValidEditorBesideAPrintScaleThatIsNoFactorInReach) {
    for (const std::string factor : {"x", "0", "-2", "0.099", "100.1", "1e300"}) {
        const Session session = read("1,/usr/bin/gedit,a,b,c," + factor + "\n");
        EXPECT_EQ(session.TextEditor, "/usr/bin/gedit ");
        EXPECT_EQ(session.PrintScale, 1.0) << factor;
        EXPECT_EQ(refused,
                  std::vector<std::string>{file + ": item 6, \"" + factor +
                                           "\", is no printer resolution factor between 0.1 and 100."});
    }
}

TEST_F(EditorSettings, TakeTheSmallestAndTheLargestPrintScale) {
    EXPECT_EQ(read("1,/bin/ed,a,b,c,0.1\n").PrintScale, 0.1);
    EXPECT_EQ(read("1,/bin/ed,a,b,c,100\n").PrintScale, 100);
    EXPECT_TRUE(refused.empty());
}

TEST_F(EditorSettings, KeepAValidPrintScaleBesideAnEmptyEditor) {
    const Session session = read("1,,a,b,c,2\n");
    EXPECT_EQ(session.TextEditor, "c:\\Windows\\write.exe ");
    EXPECT_EQ(session.PrintScale, 2.0);
    EXPECT_EQ(refused, std::vector<std::string>{file + ": item 2, the text editor, is missing."});
}

TEST_F(EditorSettings, NameEveryItemThatIsRefused) {
    expectFallback(read(""));
    EXPECT_EQ(refused.size(), 2U);
}

TEST_F(EditorSettings, AreTakenFromTheUsersFolderBeforeTheProgramsOwn) {
    std::filesystem::create_directory(folder / "user");
    writeFile(folder / "user/VARN_te_fio_info.dat", "1,/bin/mine,a,b,c,3\n");
    const Session session = read("1,/bin/everybodys,a,b,c,2\n");
    EXPECT_EQ(session.TextEditor, "/bin/mine ");
    EXPECT_EQ(session.PrintScale, 3.0);
}

TEST_F(EditorSettings, FallBackWhenTheFileIsAFolder) {
    std::filesystem::create_directory(file);
    expectFallback(read());
    EXPECT_EQ(refused.size(), 1U);
}

TEST_F(EditorSettings, FallBackWhenTheFileCannotBeRead) {
    std::filesystem::create_symlink(file, file);
    expectFallback(read());
    for (const char* unreadable : {"/proc/self/mem", "/dev/zero"}) {
        std::filesystem::remove(file);
        std::filesystem::create_symlink(unreadable, file);
        expectFallback(read());
    }
    std::filesystem::remove(file);
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    expectFallback(read());
}

TEST_F(EditorSettings, FallBackOnAFileOfAGigabyteWithoutReadingIt) {
    writeFile(folder / "VARN_te_fio_info.dat", "1,/usr/bin/gedit,a,b,c,2\n");
    std::filesystem::resize_file(file, std::uintmax_t{1} << 30);
    expectFallback(read());
    EXPECT_EQ(refused, std::vector<std::string>{file + " cannot be read: it is too large for settings."});
}

TEST_F(EditorSettings, IgnoreWhatFollowsTheSixthItem) {
    EXPECT_EQ(read("1,/bin/ed,a,b,c,2,3,4\nmore\n").PrintScale, 2.0);
}

TEST_F(EditorSettings, FallBackWhenTheFileMayNotBeRead) {
    writeFile(folder / "VARN_te_fio_info.dat", "1,/usr/bin/gedit,a,b,c,2\n");
    ASSERT_EQ(::chmod((folder / "VARN_te_fio_info.dat").c_str(), 0), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    const UnprivilegedUser user;
    expectFallback(read());
    EXPECT_EQ(refused, std::vector<std::string>{file + " cannot be opened: Permission denied."});
}

}  // namespace tessel
