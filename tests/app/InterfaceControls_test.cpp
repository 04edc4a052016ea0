// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/InterfaceControls.h"

#include "base/run_time_error.h"
#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "desktop/TextEditor.h"
#include "support/ExpectedBoxes.h"
#include "support/temporary_folder.h"

#include <QAction>
#include <gtest/gtest.h>

#include <vector>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

const QString kEditorQuestion =
    u"Note: you should use the PELR program if you wish to perminantly\n"
    u"change the default text editor used by all VARN programs.\n"
    u"\n"
    u"However, you can temporarily reset the text editor now (for this session only).\n"
    u"\n"
    u"Would you like to temporarily reset the current, default text editor?"_s;

class InterfaceControls : public testing::Test {
  protected:
    InterfaceControls() {
        theSession() = Session{};
        theSession().AppDir = theSession().DataDir = folder.path();
        theSession().TextEditor = "/usr/bin/before ";
    }
    ~InterfaceControls() override {
        setFileResponder({});
        setProgramStarter({});
        setDesktopOpener({});
        setRefusedSettings({});
    }
    TemporaryFolder folder;
    ExpectedBoxes boxes;
};

}  // namespace

TEST_F(InterfaceControls, KeepTheEditorUnlessTheQuestionIsAnsweredWithYes) {
    boxes.ask(false, kEditorQuestion);
    mnusetDTE_Click(nullptr);
    EXPECT_EQ(theSession().TextEditor, "/usr/bin/before ");
}

TEST_F(InterfaceControls, TakeTheChosenEditorWithOneBlankBehindIt) {
    FileQuestion asked;
    setFileResponder([&](const FileQuestion& question) {
        asked = question;
        return u"/opt/my editor/ed"_s;
    });
    boxes.ask(true, kEditorQuestion);
    boxes.tell(u"Note: the new selected text editor is /opt/my editor/ed "_s);
    mnusetDTE_Click(nullptr);
    EXPECT_EQ(theSession().TextEditor, "/opt/my editor/ed ");
    EXPECT_TRUE(asked.filter.startsWith(u"Text Editor Programs (*.exe)|*.exe"));
    EXPECT_FALSE(asked.toSave);
}

TEST_F(InterfaceControls, PutTheDefaultEditorBackWhenNoneIsChosen) {
    setFileResponder([](const FileQuestion&) { return QString(); });
    boxes.ask(true, kEditorQuestion);
    boxes.tell(u"Note: the text editor has been reset to the default program c:\\windows\\write.exe "_s);
    mnusetDTE_Click(nullptr);
    EXPECT_EQ(theSession().TextEditor, "c:\\windows\\write.exe ");
}

TEST_F(InterfaceControls, LeaveTheSettingsFileAsItIs) {
    const std::string settings = "1,/usr/bin/before,a,b,c,2\r\n";
    writeFile(folder / "VARN_te_fio_info.dat", settings);
    setFileResponder([](const FileQuestion&) { return u"/opt/ed"_s; });
    boxes.ask(true, kEditorQuestion);
    boxes.tell(u"Note: the new selected text editor is /opt/ed "_s);
    mnusetDTE_Click(nullptr);
    boxes.tell(u"The printer resolution has been temporarily redefined to be 1200 DPI."_s);
    mnuDPI1200_Click(nullptr);
    EXPECT_EQ(readFile(folder / "VARN_te_fio_info.dat"), settings);
}

TEST_F(InterfaceControls, RedefineThePrinterResolution) {
    boxes.tell(u"The printer resolution has been temporarily redefined to be 600 DPI."_s);
    mnuDPI600_Click(nullptr);
    EXPECT_EQ(theSession().PrintScale, 2.0);
    boxes.tell(u"The printer resolution has been temporarily redefined to be 1200 DPI."_s);
    mnuDPI1200_Click(nullptr);
    EXPECT_EQ(theSession().PrintScale, 4.0);
    boxes.tell(u"The printer resolution has been temporarily redefined to be 300 DPI."_s);
    mnuDPI300_Click(nullptr);
    EXPECT_EQ(theSession().PrintScale, 1.0);
}

TEST_F(InterfaceControls, OpenTheErrorLogInTheEditor) {
    theSession().TextEditor = "/bin/ls ";
    writeFile(folder / "error_log.dat", "");
    EditorCommand started;
    setProgramStarter([&](const EditorCommand& command) {
        started = command;
        return true;
    });
    mnuEL_Click();
    EXPECT_EQ(started.program, u"/bin/ls"_s);
    EXPECT_EQ(started.arguments, QStringList{fromPath(folder / "error_log.dat")});
}

TEST_F(InterfaceControls, OpenTheErrorLogWhereItWasWritten) {
    theSession().AppDir = folder / "read-only";
    theSession().TextEditor = "/bin/ls ";
    writeFile(folder / "error_log.dat", "");
    QStringList opened;
    setProgramStarter([&](const EditorCommand& command) {
        opened = command.arguments;
        return true;
    });
    mnuEL_Click();
    EXPECT_EQ(opened, QStringList{fromPath(folder / "error_log.dat")});
}

TEST_F(InterfaceControls, SayWhichErrorLogIsMissing) {
    try {
        mnuEL_Click();
        FAIL() << "no error";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.description(),
                  folder / "error_log.dat" + " cannot be opened: No such file or directory");
    }
}

TEST_F(InterfaceControls, OfferAllFilesFirstWhereProgramsCarryNoEnding) {
    int first = -1;
    setFileResponder([&](const FileQuestion& question) {
        first = question.firstFilter;
        return QString();
    });
    boxes.ask(true, kEditorQuestion);
    boxes.tell(u"Note: the text editor has been reset to the default program c:\\windows\\write.exe "_s);
    mnusetDTE_Click(nullptr);
    EXPECT_EQ(first, 1);
}

TEST_F(InterfaceControls, RefuseAnEditorThatMayNotBeExecuted) {
    writeFile(folder / "notes.txt", "");
    setFileResponder([&](const FileQuestion&) { return fromPath(folder / "notes.txt"); });
    boxes.ask(true, kEditorQuestion);
    try {
        mnusetDTE_Click(nullptr);
        FAIL() << "no error";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.description(),
                  folder / "notes.txt" + " cannot be used as text editor: Permission denied");
    }
    EXPECT_EQ(theSession().TextEditor, "/usr/bin/before ");
}

TEST_F(InterfaceControls, SayThatAnEditorOfTheSettingsMayNotBeExecuted) {
    writeFile(folder / "notes.txt", "");
    writeFile(folder / "error_log.dat", "");
    theSession().TextEditor = folder / "notes.txt" + " ";
    try {
        mnuEL_Click();
        FAIL() << "no error";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.description(), folder / "error_log.dat" + " cannot be opened: " +
                                           (folder / "notes.txt") + " may not be executed");
    }
}

TEST_F(InterfaceControls, NameWhatTheSettingsFileHeldInVain) {
    setRefusedSettings({"settings: item 2 is missing.", "settings: item 6 is missing."});
    const QString refused = u"\n\nsettings: item 2 is missing.\n\nsettings: item 6 is missing."_s;
    boxes.ask(false, kEditorQuestion + refused);
    mnusetDTE_Click(nullptr);
    boxes.tell(u"The printer resolution has been temporarily redefined to be 600 DPI."_s + refused);
    mnuDPI600_Click(nullptr);
}

TEST_F(InterfaceControls, CheckTheResolutionInForce) {
    QAction dpi300, dpi600, dpi1200;
    const auto checked = [&] {
        showResolution(dpi300, dpi600, dpi1200);
        return std::vector<bool>{dpi300.isChecked(), dpi600.isChecked(), dpi1200.isChecked()};
    };
    using Checks = std::vector<bool>;
    EXPECT_EQ(checked(), (Checks{true, false, false}));
    theSession().PrintScale = 2;
    EXPECT_EQ(checked(), (Checks{false, true, false}));
    theSession().PrintScale = 4;
    EXPECT_EQ(checked(), (Checks{false, false, true}));
    theSession().PrintScale = 3;
    EXPECT_EQ(checked(), (Checks{false, false, false}));
}

}  // namespace tessel
