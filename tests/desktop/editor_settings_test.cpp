// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/editor_settings.h"

#include "support/temporary_folder.h"
#include "support/unprivileged_user.h"

namespace tessel {

namespace {

class EditorSettings : public FolderTest {
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
        writeFile(file, settings);
        return read();
    }
    static void expectFallback(const Session& session) {
        EXPECT_EQ(session.TextEditor, "c:\\Windows\\write.exe ");
        EXPECT_EQ(session.PrintScale, 1.0);
    }

    const std::string file = folder / "VARN_te_fio_info.dat";
    std::vector<std::string> refused;
};

}  // namespace

TEST_F(EditorSettings, TakeTheSecondItemAsEditorAndTheSixthAsPrintScale) {
    const std::tuple<const char*, const char*, const char*, double> cases[] = {
        {"on one line", "1,/usr/bin/gedit,a,b,c,2.0\r\n", "/usr/bin/gedit ", 2},
        {"on lines of their own", "one\n/opt/my editor/ed\nthree\nfour\nfive\n4\n", "/opt/my editor/ed ", 4},
        {"commas and line ends", "one,/bin/ed\r\nthree,four,five\r\n1", "/bin/ed ", 1},
        {"in quotes", "\"a,b\",\"/opt/ed,itor/x\",\"\",\"\",\"\",\"2\"\n", "/opt/ed,itor/x ", 2},
        {"the smallest", "1,/bin/ed,a,b,c,0.1\n", "/bin/ed ", 0.1},
        {"the largest", "1,/bin/ed,a,b,c,100\n", "/bin/ed ", 100},
        {"more behind", "1,/bin/ed,a,b,c,2,3,4\nmore\n", "/bin/ed ", 2}};
    for (const auto& [what, settings, editor, scale] : cases) {
        SCOPED_TRACE(what);
        const Session session = read(settings);
        EXPECT_EQ(session.TextEditor, editor);
        EXPECT_EQ(session.PrintScale, scale);
        EXPECT_TRUE(refused.empty());
    }
}

TEST_F(EditorSettings, KeepAValidItemBesideOneThatIsRefusedWhichIsNamed) {
    std::vector<std::tuple<std::string, std::string, double, std::string>> cases = {
        {"1,/bin/ed,a,b,c\n", "/bin/ed ", 1, "item 6, the printer resolution factor, is missing."},
        {"1,,a,b,c,2\n", "c:\\Windows\\write.exe ", 2, "item 2, the text editor, is missing."}};
    for (const std::string factor : {"x", "0", "-2", "0.099", "100.1", "1e300"})
        cases.emplace_back(
            "1,/bin/ed,a,b,c," + factor + "\n", "/bin/ed ", 1,
            "item 6, \"" + factor + "\", is no printer resolution factor between 0.1 and 100.");
    for (const auto& [settings, editor, scale, refusal] : cases) {
        const Session session = read(settings);
        EXPECT_EQ(session.TextEditor, editor) << settings;
        EXPECT_EQ(session.PrintScale, scale) << settings;
        EXPECT_EQ(refused, std::vector<std::string>{file + ": " + refusal});
    }
    expectFallback(read(""));
    EXPECT_EQ(refused.size(), 2U);
}

TEST_F(EditorSettings, FallBackWithoutAWordWhenTheFileIsMissing) {
    expectFallback(read());
    EXPECT_TRUE(refused.empty());
}

TEST_F(EditorSettings, AreTakenFromTheUsersFolderBeforeTheProgramsOwn) {
    std::filesystem::create_directory(folder / "user");
    writeFile(folder / "user/VARN_te_fio_info.dat", "1,/bin/mine,a,b,c,3\n");
    const Session session = read("1,/bin/everybodys,a,b,c,2\n");
    EXPECT_EQ(session.TextEditor, "/bin/mine ");
    EXPECT_EQ(session.PrintScale, 3.0);
}

TEST_F(EditorSettings, FallBackAndSayWhyWhenTheFileIsNoneOrCannotBeRead) {
    const std::pair<const char*, std::function<void()>> obstacles[] = {
        {"Is a directory.", [this] { std::filesystem::create_directory(file); }},
        {"Too many levels of symbolic links.", [this] { std::filesystem::create_symlink(file, file); }},
        {"it is a file of the system's own.",
         [this] { std::filesystem::create_symlink("/proc/self/mem", file); }},
        {"", [this] { std::filesystem::create_symlink("/dev/zero", file); }},
        {"", [this] { ::mkfifo(file.c_str(), 0600); }},
        {"it is too large for settings.", [this] {
             writeFile(file, "1,/usr/bin/gedit,a,b,c,2\n");
             std::filesystem::resize_file(file, std::uintmax_t{1} << 30);
         }}};
    for (const auto& [reason, put] : obstacles) {
        std::filesystem::remove(file);
        put();
        expectFallback(read());
        ASSERT_EQ(refused.size(), 1U);
        EXPECT_TRUE(refused[0].starts_with(file + " cannot be read: " + reason)) << refused[0];
    }
}

TEST_F(EditorSettings, FallBackWhenTheFileMayNotBeRead) {
    writeFile(file, "1,/usr/bin/gedit,a,b,c,2\n");
    ASSERT_EQ(::chmod(file.c_str(), 0), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    const UnprivilegedUser user;
    expectFallback(read());
    EXPECT_EQ(refused, std::vector<std::string>{file + " cannot be opened: Permission denied."});
}

}  // namespace tessel
