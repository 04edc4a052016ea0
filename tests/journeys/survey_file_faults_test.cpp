// SPDX-License-Identifier: GPL-3.0-or-later
// A survey that has been saved and changed, and whose file or folder is no longer what it was when it is to
// be saved again: the user is told, nothing is lost, and it can be saved elsewhere.
#include "desktop/FileDialogs.h"
#include "journal/journal.h"
#include "storage/recovery_file.h"
#include "storage/survey_file.h"
#include "support/RunningProgram.h"
#include "support/journal_bits.h"
#include "support/survey_under_test.h"
#include "support/unprivileged_user.h"

namespace tessel {

namespace {

namespace fs = std::filesystem;

class UnsavedSurvey : public testing::Test, protected RunningProgram {
  protected:
    UnsavedSurvey() {
        fs::permissions(folder.path(), fs::perms::all);
        user.emplace();
        theSession().DataDir = folder / "data";
        for (const char* const name : {"data", "drive"})
            fs::create_directory(folder / name);
        main.reset();
        startAfresh();
        main = createProgram(folder / "state");
        main->show();
    }
    ~UnsavedSurvey() override {
        if (fs::exists(folder / "drive")) fs::permissions(folder / "drive", fs::perms::owner_all);
    }

    // Six sites in two rows, saved on the drive; then the last act is taken back.
    void saveAndChange() {
        importTwoRows();
        saveAs(onDrive);
        saved = readFile(onDrive);
        chooseItem(*main, u"mnuUndo"_s);
    }
    void saveAs(const std::string& where) {
        chooseFile(where);
        chooseItem(*main, u"mnuSaveSurveyAs"_s);
    }
    // Nothing is chosen where a name is asked for.
    void save() {
        setFileResponder([this](const FileQuestion&) { return ++asked, QString(); });
        chooseItem(*main, u"mnuSaveSurvey"_s);
    }
    void expectRefused(int reason) {
        boxes.tell(fromPath(onDrive) + u" cannot be written: "_s +
                   QString::fromLocal8Bit(std::strerror(reason)));
        save();
    }
    // The work is kept for a crash, and can be saved where nothing has happened.
    void expectNothingLost() {
        EXPECT_EQ(main->lblSurveyFile->text(), u"field.gpkg \u2013 changes not saved"_s);
        fs::create_directory(folder / "copy");
        for (const auto& kept : fs::directory_iterator(folder / "state"))
            fs::copy(kept, folder / "copy/recovery-1-0");
        const auto left = findLeftWork(folder / "copy");
        ASSERT_EQ(left.size(), 1U);
        EXPECT_EQ(journalDifferences(left.front().read().journal, theJournal()), "");
        const std::string elsewhere = folder / "elsewhere.gpkg";
        saveAs(elsewhere);
        EXPECT_EQ(main->lblSurveyFile->text(), u"elsewhere.gpkg"_s);
        EXPECT_EQ(journalDifferences(openSurvey(elsewhere).journal, theJournal()), "");
    }

    const std::string onDrive = folder / "drive/field.gpkg";
    std::string saved;
    int asked = 0;
    std::optional<UnprivilegedUser> user;
};

}  // namespace

TEST_F(UnsavedSurvey, WhoseFileMayNoLongerBeWrittenIsNotLost) {
    saveAndChange();
    fs::permissions(onDrive, fs::perms(0444));
    expectRefused(EACCES);
    EXPECT_EQ(readFile(onDrive), saved);
    expectNothingLost();
}

TEST_F(UnsavedSurvey, WhoseFolderMayNoLongerBeEnteredIsNotLost) {
    saveAndChange();
    fs::permissions(folder / "drive", fs::perms::none);
    expectRefused(EACCES);
    fs::permissions(folder / "drive", fs::perms::owner_all);
    EXPECT_EQ(readFile(onDrive), saved);
    expectNothingLost();
}

TEST_F(UnsavedSurvey, WhoseFolderHasGoneIsNotLost) {
    saveAndChange();
    fs::rename(folder / "drive", folder / "moved");
    expectRefused(ENOENT);
    EXPECT_EQ(readFile(folder / "moved/field.gpkg"), saved);
    expectNothingLost();
}

TEST_F(UnsavedSurvey, InWhoseFilesPlaceIsAFolderAsksForAnotherName) {
    saveAndChange();
    fs::remove(onDrive);
    fs::create_directory(onDrive);
    save();
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(fs::is_empty(onDrive));
    expectNothingLost();
}

}  // namespace tessel
