// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/frmSaveTable.h"

#include "desktop/FileDialogs.h"
#include "support/ExpectedBoxes.h"
#include "support/UserDriver.h"
#include "support/made_acts.h"
#include "support/made_survey.h"
#include "support/survey_under_test.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

class TableWindow : public testing::Test {
  protected:
    TableWindow() {
        surveyUnderTest() = madeSurvey({{0, 10, 20, 40, 1}, {1, 11, 21, 41, 1}, {50, 10, 22, 42, 2}});
        setFileResponder([this](const FileQuestion& question) {
            question_ = question;
            return fromPath(answer);
        });
    }

    std::string written() const { return readFile(answer); }

    const TemporaryFolder folder;
    std::string answer = folder / "table.csv";
    FileQuestion question_;
    ExpectedBoxes boxes;
};

}  // namespace

TEST_F(TableWindow, OffersWhatTheSurveyHas) {
    surveyUnderTest().SiteIDPresent = surveyUnderTest().TwoEMColumns = false;
    const frmSaveTable window;
    EXPECT_FALSE(window.chkSite->isEnabled() || window.chkSite->isChecked());
    EXPECT_FALSE(window.chkEM2->isEnabled() || window.chkEM2->isChecked());
    for (const QCheckBox* box : {window.chkX, window.chkY, window.chkEM1, window.chkRow})
        EXPECT_TRUE(box->isEnabled() && box->isChecked()) << box->text().toStdString();
    EXPECT_TRUE(window.chkLine->isEnabled() && !window.chkLine->isChecked());
    EXPECT_FALSE(window.chkRemoved->isEnabled());
    EXPECT_EQ(window.lblRemoved->text(), u"None since the import."_s);
    EXPECT_EQ(window.chkX->text(), u"X (m)"_s);
}

TEST_F(TableWindow, WritesWhatIsChosen) {
    frmSaveTable window;
    QSignalSpy saved(&window, &frmSaveTable::saved);
    window.show();
    for (const QString& name : {u"chkSite"_s, u"chkY"_s, u"chkEM2"_s, u"chkLine"_s, u"optSemicolon"_s})
        clickOn(window, name);
    clickOn(window, u"cmdSave"_s);
    EXPECT_EQ(written(), "\"X (m)\";\"EM1 (mS/m)\";Row;Line\r\n0;20;1;1\r\n1;21;1;3\r\n50;22;2;5\r\n");
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(question_.toSave);
    EXPECT_EQ(question_.caption, u"Export a table"_s);
    EXPECT_EQ(question_.suffix, u"csv"_s);
    ASSERT_EQ(saved.count(), 1);
    const auto file = saved[0][0].value<RecordedExport>();
    EXPECT_EQ(file.format, "X (m), EM1 (mS/m), Row, Line");
    EXPECT_EQ(file.file.path, answer);
    EXPECT_EQ(file.sites, 3);
    EXPECT_EQ(file.firstRow, 1);
}

TEST_F(TableWindow, ListsRemovedSitesWhenTickedWithTheKeyboard) {
    deleteRow(theJournal(), 2);
    frmSaveTable window;
    window.show();
    EXPECT_EQ(window.lblRemoved->text(), u"1 since the import."_s);
    QTest::keyClick(window.chkRemoved, Qt::Key_Space);
    EXPECT_TRUE(window.chkRemoved->isChecked());
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_TRUE(written().ends_with("1003,50,10,22,42,2,\"Deleted row 2 with its 1 site\"\r\n")) << written();
}

TEST_F(TableWindow, SavesNothingWithoutAColumn) {
    frmSaveTable window;
    window.show();
    EXPECT_FALSE(window.lblNotice->isVisible());
    for (const QString& name : {u"chkSite"_s, u"chkX"_s, u"chkY"_s, u"chkEM1"_s, u"chkEM2"_s, u"chkRow"_s})
        clickOn(window, name);
    EXPECT_FALSE(window.cmdSave->isEnabled());
    EXPECT_EQ(window.lblNotice->text(), u"Choose at least one column."_s);
    EXPECT_TRUE(window.lblNotice->isVisible());
    clickOn(window, u"chkLine"_s);
    EXPECT_TRUE(window.cmdSave->isEnabled());
}

TEST_F(TableWindow, StaysWhenTheFileDialogIsCancelledOrTheFileCannotBeWritten) {
    frmSaveTable window;
    window.show();
    answer.clear();
    clickOn(window, u"cmdSave"_s);
    EXPECT_TRUE(window.isVisible());
    answer = folder / "gone/table.csv";
    boxes.tell(fromPath(answer) + u" cannot be written: No such file or directory"_s);
    clickOn(window, u"cmdSave"_s);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(filesIn(folder), 0U);
}

TEST_F(TableWindow, SaysThatPositionsAreDegreesWhereTheyLookLikeThem) {
    surveyUnderTest() = madeSurvey({{7.1, 50.1, 20, 40, 1}, {7.1001, 50.1001, 21, 41, 1}});
    EXPECT_EQ(frmSaveTable().chkX->text(), u"X (degrees)"_s);
}

}  // namespace tessel
