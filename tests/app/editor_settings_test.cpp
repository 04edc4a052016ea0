#include "app/editor_settings.h"

#include "support/temporary_folder.h"
#include "support/unprivileged_user.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace {

class EditorSettings : public testing::Test {
  protected:
    Session read() {
        Session session;
        session.AppDir = folder.path();
        session.TextEditor = "something else";
        session.PrintScale = 7;
        ReadTEinfo(session);
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

TEST_F(EditorSettings, FallBackWhenTheFileIsMissing) {
    expectFallback(read());
}

TEST_F(EditorSettings, FallBackOnFewerThanSixItems) {
    expectFallback(read("1,/usr/bin/gedit,a,b,c\n"));
}

TEST_F(EditorSettings, FallBackOnAPrintScaleThatIsNoPositiveNumber) {
    expectFallback(read("1,/usr/bin/gedit,a,b,c,x\n"));
    expectFallback(read("1,/usr/bin/gedit,a,b,c,0\n"));
    expectFallback(read("1,/usr/bin/gedit,a,b,c,-2\n"));
}

TEST_F(EditorSettings, FallBackOnAnEmptyEditor) {
    expectFallback(read("1,,a,b,c,2\n"));
}

TEST_F(EditorSettings, FallBackWhenTheFileIsAFolder) {
    std::filesystem::create_directory(folder / "VARN_te_fio_info.dat");
    expectFallback(read());
}

TEST_F(EditorSettings, FallBackWhenTheFileCannotBeRead) {
    const std::string file = folder / "VARN_te_fio_info.dat";
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
    std::filesystem::resize_file(folder / "VARN_te_fio_info.dat", std::uintmax_t{1} << 30);
    expectFallback(read());
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
}
