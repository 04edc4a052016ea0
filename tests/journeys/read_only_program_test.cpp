// SPDX-License-Identifier: GPL-3.0-or-later
// The program in a folder that its user may only read, as an administrator has copied it there: all of it
// works that writes elsewhere, and what would write into the folder says so.
#include "app/frmMain.h"
#include "app/survey.h"
#include "desktop/FileDialogs.h"
#include "desktop/editor_settings.h"
#include "program/Program.h"
#include "program/program_directories.h"
#include "support/ExpectedBoxes.h"
#include "support/Journeys.h"
#include "support/UserDriver.h"
#include "support/survey_under_test.h"
#include "support/temporary_folder.h"
#include "support/unprivileged_user.h"

namespace tessel {

namespace {

namespace fs = std::filesystem;

const std::string kTransects =
    " 1000000       2000000       12            1 \r\n 1000001       2000000       13            1 \r\n";

class ReadOnlyProgram : public testing::Test {
  protected:
    ReadOnlyProgram() {
        fs::create_directories(folder / "program");
        fs::copy(fs::path(TESSEL_SOURCE_DIR) / "helpdocs", folder / "program/helpdocs");
        writeFile(folder / "program/VARN_te_fio_info.dat", "1,/usr/bin/gedit,a,b,c,2\n");
        writeFile(folder / "program/error_log.dat", "the administrator's log");
        fs::create_directory(folder / "home");
        writeFile(folder / "home/survey.dat",
                  "1000000 2000000      12\r\n1000001 2000000      13\r\nnothing\r\n");
        for (const auto& entry : fs::recursive_directory_iterator(folder.path()))
            fs::permissions(entry, fs::perms(entry.is_directory() ? 0555 : 0444));
        fs::permissions(folder / "program/VARN_te_fio_info.dat", fs::perms::none);
        fs::permissions(folder / "home", fs::perms::all);
        fs::permissions(folder.path(), fs::perms(0755));
        user.emplace();
        findProgramDirectories(theSession(), folder / "program", folder / "home/data");
        ReadTEinfo(theSession());
        main = createProgram();
        main->show();
    }
    ~ReadOnlyProgram() override {
        user.reset();
        fs::permissions(folder / "program", fs::perms::owner_all);
        fs::permissions(folder / "program/helpdocs", fs::perms::owner_all);
    }

    void importSurvey() {
        boxes.tell(u"The error log could not be written:\n"_s + refused("error_log.dat") +
                   u"\n\nThe file has been read without it."_s);
        expectTrimbleReport(boxes, 2, 1);
        importTrimbleFile(*main, sensorEntries(folder / "home/survey.dat"));
    }
    // Tries to export to this file of the program's folder.
    void exportInto(const std::string& name) {
        setFileResponder(
            [this, name](const FileQuestion&) { return fromPath(folder / ("program/" + name)); });
        chooseItem(*main, u"mnuSave"_s);
        QWidget& window = shownWindow(u"frmOutput"_s);
        clickOn(window, u"Command1"_s);
        clickOn(window, u"Command2"_s);
        window.close();
        waitUntilClosed(u"frmOutput"_s);
    }
    QString refused(const std::string& name) const {
        return fromPath(folder / "program/" + name) + u" cannot be written: Permission denied"_s;
    }

    TemporaryFolder folder;
    std::optional<UnprivilegedUser> user;
    ExpectedBoxes boxes;
    std::unique_ptr<frmMain> main;
};

}  // namespace

TEST_F(ReadOnlyProgram, StartsWithTheFallbackEditorWhenItsSettingsMayNotBeRead) {
    EXPECT_EQ(theSession().DataDir, folder / "program");
    EXPECT_EQ(theSession().TextEditor, kFallbackEditor);
    EXPECT_EQ(theSession().PrintScale, 1.0);
}

TEST_F(ReadOnlyProgram, ImportsWithoutAnErrorLogAndLeavesTheOldOne) {
    importSurvey();
    EXPECT_EQ(theSurvey().NumSites, 2);
    EXPECT_EQ(readFile(folder / "program/error_log.dat"), "the administrator's log");
}

TEST_F(ReadOnlyProgram, ExportsToWhereItsUserMayWriteOnly) {
    importSurvey();
    boxes.tell(refused("out.txt"));
    exportInto("out.txt");
    EXPECT_FALSE(theSession().DataSaved);

    const QString out = fromPath(folder / "home/out.txt");
    boxes.tell(u"Output data saved to "_s + out, u"VARN-Tesl"_s);
    exportTransectFile(*main, out);
    EXPECT_EQ(readFile(folder / "home/out.txt"), kTransects);
}

TEST_F(ReadOnlyProgram, ShowsItsHelpAndSaysThatItCannotWriteACopy) {
    chooseItem(*main, u"mnuHmain1"_s);
    QWidget& help = shownWindow(u"frmHelpTesl"_s);
    boxes.tell(refused("helpdoc.rtf"));
    clickOn(help, u"Command1"_s);
    help.close();
}

}  // namespace tessel
