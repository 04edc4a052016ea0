// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/InterfaceControls.h"

#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "desktop/TextEditor.h"
#include "support/ExpectedBoxes.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

class InterfaceControls : public FolderTest {
  protected:
    InterfaceControls() {
        theSession().AppDir = theSession().DataDir = folder.path();
        theSession().TextEditor = "/usr/bin/before ";
    }
    // Chooses an editor in the file dialog, none when empty; gives the question of the dialog.
    FileQuestion chooseEditor(const std::string& editor) {
        FileQuestion asked;
        setFileResponder([&](const FileQuestion& question) {
            asked = question;
            return fromPath(editor);
        });
        boxes.ask(true, kEditorQuestion);
        if (editor.starts_with("/opt"))
            boxes.tell(u"Note: the new selected text editor is %1 "_s.arg(fromPath(editor)));
        else if (editor.empty())
            boxes.tell(
                u"Note: the text editor has been reset to the default program c:\\windows\\write.exe "_s);
        mnusetDTE_Click(nullptr);
        return asked;
    }

    ExpectedBoxes boxes;
};

}  // namespace

TEST_F(InterfaceControls, KeepTheEditorUnlessTheQuestionIsAnsweredWithYes) {
    boxes.ask(false, kEditorQuestion);
    mnusetDTE_Click(nullptr);
    EXPECT_EQ(theSession().TextEditor, "/usr/bin/before ");
}

TEST_F(InterfaceControls, TakeTheChosenEditorWithOneBlankBehindItAndTheDefaultWhenNoneIs) {
    const FileQuestion asked = chooseEditor("/opt/my editor/ed");
    EXPECT_EQ(theSession().TextEditor, "/opt/my editor/ed ");
    EXPECT_TRUE(asked.filter.startsWith(u"Text Editor Programs (*.exe)|*.exe"));
    EXPECT_EQ(asked.firstFilter, 1) << "all files, where programs carry no ending";
    EXPECT_FALSE(asked.toSave);
    chooseEditor("");
    EXPECT_EQ(theSession().TextEditor, "c:\\windows\\write.exe ");
}

TEST_F(InterfaceControls, LeaveTheSettingsFileAsItIs) {
    const std::string settings = "1,/usr/bin/before,a,b,c,2\r\n";
    writeFile(folder / "VARN_te_fio_info.dat", settings);
    chooseEditor("/opt/ed");
    boxes.tell(u"The printer resolution has been temporarily redefined to be 1200 DPI."_s);
    mnuDPI1200_Click(nullptr);
    EXPECT_EQ(readFile(folder / "VARN_te_fio_info.dat"), settings);
}

TEST_F(InterfaceControls, OpenTheErrorLogInTheEditorWhereItWasWritten) {
    theSession().AppDir = folder / "read-only";
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

TEST_F(InterfaceControls, SayWhichErrorLogIsMissingAndThatAnEditorMayNotBeExecuted) {
    EXPECT_EQ(descriptionOf([] { mnuEL_Click(); }),
              folder / "error_log.dat cannot be opened: No such file or directory");
    writeFile(folder / "notes.txt", "");
    writeFile(folder / "error_log.dat", "");
    theSession().TextEditor = folder / "notes.txt ";
    EXPECT_EQ(descriptionOf([] { mnuEL_Click(); }),
              folder / "error_log.dat cannot be opened: " + (folder / "notes.txt may not be executed"));
}

TEST_F(InterfaceControls, RefuseAnEditorThatMayNotBeExecuted) {
    writeFile(folder / "notes.txt", "");
    EXPECT_EQ(descriptionOf([this] { chooseEditor(folder / "notes.txt"); }),
              folder / "notes.txt cannot be used as text editor: Permission denied");
    EXPECT_EQ(theSession().TextEditor, "/usr/bin/before ");
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
    for (const int scale : {1, 2, 4, 3}) {
        theSession().PrintScale = scale;
        showResolution(dpi300, dpi600, dpi1200);
        EXPECT_EQ(dpi300.isChecked(), scale == 1);
        EXPECT_EQ(dpi600.isChecked(), scale == 2);
        EXPECT_EQ(dpi1200.isChecked(), scale == 4);
    }
}

}  // namespace tessel
