// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/TextEditor.h"

#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "support/ExpectedBoxes.h"
#include "support/environment.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

class TextEditor : public FolderTest {
  protected:
    // A program of this name, which notes what it was called with unless it does something else.
    QString program(std::string_view name, std::string_view script = "printf '%s' \"$*\" > \"$0.opened\"\n") {
        const std::string file = folder / name;
        writeFile(file, "#!/bin/sh\n" + std::string(script));
        std::filesystem::permissions(file, std::filesystem::perms::all);
        return fromPath(file);
    }
    // The desktop's own opener is the one in the folder.
    void useTheDesktops() {
        paths.set(folder.path() + ":" + std::getenv("PATH"));
        theSession().TextEditor = "c:\\Windows\\write.exe ";
    }
    // What the editor or the desktop's opener was called with, as it has written beside itself.
    static std::string whatWasOpened(const std::string& note) {
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return std::filesystem::exists(note) && !readFile(note).empty(); }));
        return readFile(note);
    }

    const Environment paths{"PATH", std::getenv("PATH")};
};

}  // namespace

TEST_F(TextEditor, HasAPathWithBlanksInQuotesOrNotAndArgumentsBehindIt) {
    const QString editor = program("my good editor");
    const std::pair<QString, QStringList> cases[] = {
        {editor + u' ', {}},
        {editor + u" -w --title \"a b\" "_s, {u"-w"_s, u"--title"_s, u"a b"_s}},
        {u"\"%1\" -w"_s.arg(editor), {u"-w"_s}}};
    for (const auto& [line, arguments] : cases) {
        EXPECT_EQ(splitEditorCommand(line).program, editor);
        EXPECT_EQ(splitEditorCommand(line).arguments, arguments);
    }
    EXPECT_TRUE(splitEditorCommand(u"sh -c"_s).program.endsWith(u"/sh"));
}

TEST_F(TextEditor, IsStartedWithItsArgumentsAndTheFileWithoutAShellWhateverTheirNames) {
    program("\xE9 ed");
    theSession().TextEditor = folder / "\xE9 ed -w ";
    const std::string name = folder / "it's \"quoted\" $(touch nothing); %20 ü \xE4.dat";
    writeFile(name, "");
    startTextEditor(name);
    EXPECT_EQ(whatWasOpened(folder / "\xE9 ed.opened"), "-w " + name);
}

TEST_F(TextEditor, OfTheFallbackIsTheDesktopsOwnWhereThereIsNoSuchProgram) {
    for (const char* fallback : {"c:\\Windows\\write.exe ", "c:\\windows\\write.exe "}) {
        theSession().TextEditor = fallback;
        QString opened;
        setDesktopOpener([&](const QString& file) {
            opened = file;
            return true;
        });
        startTextEditor(folder / "log.dat");
        EXPECT_EQ(opened.toStdString(), folder / "log.dat");
    }
}

TEST_F(TextEditor, ThatCannotBeStartedIsReportedWithPathAndReason) {
    theSession().TextEditor = "/nowhere/ed ";
    EXPECT_EQ(descriptionOf([] { startTextEditor("/x/log.dat"); }),
              "/x/log.dat cannot be opened: there is no program /nowhere/ed");
    theSession().TextEditor = program("ed").toStdString() + " ";
    setProgramStarter([](const EditorCommand&) { return false; });
    EXPECT_THROW(startTextEditor("/x/log.dat"), RunTimeError);
    theSession().TextEditor = "c:\\Windows\\write.exe ";
    setDesktopOpener([](const QString&) { return false; });
    EXPECT_THROW(startTextEditor("/x/log.dat"), RunTimeError);
}

TEST_F(TextEditor, ThatTheDesktopDoesNotFindIsReported) {
    program("xdg-open", "printf '%s' \"$1\" > \"$0.asked\"\nexit $(cat \"$0.answer\")\n");
    useTheDesktops();
    const std::string log = folder / "error log.dat";
    for (const auto& [answer, isReported] : {std::pair("0", false), {"1", false}, {"3", true}, {"4", true}}) {
        writeFile(folder / "xdg-open.answer", answer);
        ExpectedBoxes boxes;
        if (isReported)
            boxes.tell(fromPath(log) +
                       u" cannot be opened: no text editor has been set and the desktop has no "
                       u"application for it"_s);
        startTextEditor(log);
        const std::string asked = folder / "xdg-open.asked";
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return std::filesystem::exists(asked) && readFile(asked) == log && boxes.pending() == 0;
        })) << answer;
        QTest::qWait(100);  // for a box that nobody expects
        std::filesystem::remove(asked);
    }
}

TEST_F(TextEditor, MayStayOpenLongerThanTheProgram) {
    const std::string editor =
        toPath(program("slow", "exec >/dev/null 2>&1\n: > \"$0.opened\"\nexec sleep 5\n"));
    theSession().TextEditor = editor + " ";
    startTextEditor(folder / "log.dat");
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(editor + ".opened"); }));
    EXPECT_EQ(qApp->findChild<QProcess*>(), nullptr) << "it would be ended with the program";
}

TEST_F(TextEditor, OfTheDesktopIsGivenTheAddressOfAFileWhoseNameIsNotUnicode) {
    program("xdg-open");
    useTheDesktops();
    startTextEditor(folder / "Gel\xE4nde ü.dat");
    EXPECT_EQ(whatWasOpened(folder / "xdg-open.opened"),
              "file://" + folder.path() + "/Gel%E4nde%20%C3%BC.dat");
}

}  // namespace tessel
