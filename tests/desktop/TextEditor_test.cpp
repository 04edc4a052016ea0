// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/TextEditor.h"

#include "base/run_time_error.h"
#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "support/ExpectedBoxes.h"
#include "support/temporary_folder.h"

#include <QProcess>
#include <QTest>
#include <gtest/gtest.h>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

class TextEditor : public testing::Test {
  protected:
    TextEditor() { theSession() = Session{}; }
    ~TextEditor() override {
        setProgramStarter({});
        setDesktopOpener({});
    }
    QString program(std::string_view name) {
        const std::string path = folder / name;
        writeFile(path, "#!/bin/sh\n[ \"$1\" = -w ] && shift\nprintf '%s' \"$1\" > \"$0.opened\"\n");
        std::filesystem::permissions(path, std::filesystem::perms::all);
        return fromPath(path);
    }
    TemporaryFolder folder;
};

}  // namespace

TEST_F(TextEditor, IsFoundWhenItsPathHoldsBlanks) {
    const QString editor = program("my good editor");
    const EditorCommand command = splitEditorCommand(editor + u' ');
    EXPECT_EQ(command.program, editor);
    EXPECT_TRUE(command.arguments.isEmpty());
}

TEST_F(TextEditor, KeepsTheArgumentsThatFollowItsPath) {
    const QString editor = program("my editor");
    const EditorCommand command = splitEditorCommand(editor + u" -w --title \"a b\" "_s);
    EXPECT_EQ(command.program, editor);
    EXPECT_EQ(command.arguments, (QStringList{u"-w"_s, u"--title"_s, u"a b"_s}));
}

TEST_F(TextEditor, MayStandInQuotesAndOnThePath) {
    const QString editor = program("my editor");
    EXPECT_EQ(splitEditorCommand(u"\"%1\" -w"_s.arg(editor)).program, editor);
    EXPECT_TRUE(splitEditorCommand(u"sh -c"_s).program.endsWith(u"/sh"));
}

TEST_F(TextEditor, IsStartedWithTheFileWithoutAShell) {
    theSession().TextEditor = (program("ed") + u" -w "_s).toStdString();
    const std::string name = folder / "it's \"quoted\" $(touch nothing); %20 ü.dat";
    writeFile(name, "");
    startTextEditor(name);
    const std::string opened = folder / "ed.opened";
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return std::filesystem::exists(opened) && !readFile(opened).empty(); }));
    EXPECT_EQ(readFile(opened), name);
}

TEST_F(TextEditor, IsGivenTheFileBehindItsOwnArguments) {
    theSession().TextEditor = (program("ed") + u" -w --title \"a b\" "_s).toStdString();
    EditorCommand started;
    setProgramStarter([&](const EditorCommand& command) {
        started = command;
        return true;
    });
    startTextEditor("/x/log.dat");
    EXPECT_EQ(started.arguments, (QStringList{u"-w"_s, u"--title"_s, u"a b"_s, u"/x/log.dat"_s}));
}

TEST_F(TextEditor, OfTheFallbackIsTheDesktopsOwnWhereThereIsNoSuchProgram) {
    for (const char* fallback : {"c:\\Windows\\write.exe ", "c:\\windows\\write.exe "}) {
        theSession().TextEditor = fallback;
        QString opened;
        setDesktopOpener([&](const QString& path) {
            opened = path;
            return true;
        });
        startTextEditor(folder / "log.dat");
        EXPECT_EQ(opened.toStdString(), folder / "log.dat");
    }
}

TEST_F(TextEditor, ThatCannotBeStartedIsReportedWithPathAndReason) {
    theSession().TextEditor = "/nowhere/ed ";
    EXPECT_THROW(
        {
            try {
                startTextEditor("/x/log.dat");
            } catch (const RunTimeError& error) {
                EXPECT_EQ(error.description(),
                          "/x/log.dat cannot be opened: there is no program /nowhere/ed");
                throw;
            }
        },
        RunTimeError);
    theSession().TextEditor = program("ed").toStdString() + " ";
    setProgramStarter([](const EditorCommand&) { return false; });
    EXPECT_THROW(startTextEditor("/x/log.dat"), RunTimeError);
    theSession().TextEditor = "c:\\Windows\\write.exe ";
    setDesktopOpener([](const QString&) { return false; });
    EXPECT_THROW(startTextEditor("/x/log.dat"), RunTimeError);
}

TEST_F(TextEditor, ThatTheDesktopDoesNotFindIsReported) {
    writeFile(folder / "xdg-open",
              "#!/bin/sh\nprintf '%s' \"$1\" > \"$0.asked\"\nexit $(cat \"$0.answer\")\n");
    std::filesystem::permissions(folder / "xdg-open", std::filesystem::perms::all);
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", QByteArray::fromStdString(folder / "") + ":" + before);
    theSession().TextEditor = "c:\\Windows\\write.exe ";
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
    qputenv("PATH", before);
}

TEST_F(TextEditor, AndTheFileMayHaveNamesThatAreNotUnicode) {
    const std::string editor = folder /
                               "\xE9"
                               "diteur";
    program(
        "\xE9"
        "diteur");
    theSession().TextEditor = editor + " -w ";
    const std::string name = folder / "Gel\xE4nde.dat";
    writeFile(name, "");
    startTextEditor(name);
    const std::string opened = editor + ".opened";
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return std::filesystem::exists(opened) && !readFile(opened).empty(); }));
    EXPECT_EQ(readFile(opened), name);
}

TEST_F(TextEditor, MayStayOpenLongerThanTheProgram) {
    const std::string editor = folder / "slow";
    writeFile(editor, "#!/bin/sh\nexec >/dev/null 2>&1\n: > \"$0.opened\"\nexec sleep 5\n");
    std::filesystem::permissions(editor, std::filesystem::perms::all);
    theSession().TextEditor = editor + " ";
    startTextEditor(folder / "log.dat");
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(editor + ".opened"); }));
    EXPECT_EQ(qApp->findChild<QProcess*>(), nullptr) << "it would be ended with the program";
}

TEST_F(TextEditor, OfTheDesktopIsGivenTheAddressOfAFileWhoseNameIsNotUnicode) {
    writeFile(folder / "xdg-open", "#!/bin/sh\nprintf '%s' \"$1\" > \"$0.asked\"\n");
    std::filesystem::permissions(folder / "xdg-open", std::filesystem::perms::all);
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", QByteArray::fromStdString(folder / "") + ":" + before);
    theSession().TextEditor = "c:\\Windows\\write.exe ";
    startTextEditor(folder / "Gel\xE4nde ü.dat");
    const std::string asked = folder / "xdg-open.asked";
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(asked) && !readFile(asked).empty(); }));
    EXPECT_EQ(readFile(asked), "file://" + folder.path() + "/Gel%E4nde%20%C3%BC.dat");
    qputenv("PATH", before);
}

}  // namespace tessel
