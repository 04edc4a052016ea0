// SPDX-License-Identifier: GPL-3.0-or-later
// What the main window says after an import, through the real windows.
#include "app/applied_adjustments.h"
#include "desktop/TextEditor.h"
#include "support/RunningProgram.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

class SummaryAfterAnImport : public testing::Test, protected RunningProgram {
  protected:
    SummaryAfterAnImport() {
        theSession().TextEditor = "/bin/ls ";
        setProgramStarter([this](const EditorCommand& command) {
            started << command.arguments.join(u'|');
            return true;
        });
    }

    void importLines(std::string_view bytes, int layout) {
        writeFile(folder / "survey.csv", bytes);
        importGeneric(folder / "survey.csv", layout);
    }
    bool tells(const QString& name) const {
        const auto* const label = main->surveySummary->findChild<QLabel*>(u"lblSummary"_s + name);
        return label != nullptr && label->isVisible();
    }
    QString told(const QString& name) const {
        if (!tells(name)) return u"nothing visible"_s;
        return main->surveySummary->findChild<QLabel*>(u"lblSummary"_s + name)->text();
    }
    void followTheLink() {
        QLabel& link = controlAs<QLabel>(*main, u"lblSummaryLogLink"_s);
        QTest::mouseClick(&link, Qt::LeftButton, {}, QPoint(10, link.height() / 2));
    }

    QStringList started;
};

constexpr const char* kTwoRows =
    "x,y,ec,row\n10,20,5,1\n10,21,6,1\n10,23,7,1\n30,23,-8,2\n30,21,9,2\n30,20,8,2\n";

}  // namespace

TEST_F(SummaryAfterAnImport, TellsWhatWasRead) {
    expectGenericReport(5, 2);
    importLines(kTwoRows, 0);
    EXPECT_EQ(main->lblInvitation->text(),
              u"5 sites in 2 rows\nThe Plot menu shows them, the Edit menu cleans them."_s);
    EXPECT_TRUE(main->surveySummary->text().contains(u"File: "_s + fromPath(folder / "survey.csv")));
    EXPECT_EQ(told(u"Lines"_s), u"7"_s);
    EXPECT_EQ(told(u"Rejected"_s), u"2"_s);
    EXPECT_EQ(told(u"Rejected2"_s), u"1 × non-numeric X-coord data (first in line 1)"_s);
    EXPECT_EQ(told(u"Rejected3"_s), u"1 × 1st EM reading below cut-off (first in line 5)"_s);
    EXPECT_EQ(told(u"Sites"_s), u"5"_s);
    EXPECT_EQ(told(u"Rows"_s), u"2"_s);
    EXPECT_EQ(told(u"X"_s) + told(u"XTo"_s), u"10.0030.00"_s);
    EXPECT_FALSE(tells(u"Warning"_s));
    EXPECT_FALSE(tells(u"LogLine"_s)) << "the menu opens it";
    followTheLink();
    EXPECT_EQ(started, QStringList{fromPath(folder / "error_log.dat")});
}

TEST_F(SummaryAfterAnImport, TellsOfTheFixedColumnsToo) {
    writeFile(folder / "survey.dat", "100 200 12\n100 201 13\nno numbers\n");
    expectTrimbleReport(2, 1);
    importTrimbleFile(*main, {folder / "survey.dat", u"20"_s, {}, {1, 3}, {5, 7}, {9, 10}, {}});
    EXPECT_EQ(told(u"Lines"_s), u"3"_s);
    EXPECT_EQ(told(u"Rejected2"_s), u"1 × non-numeric X-coord data (first in line 3)"_s);
    EXPECT_TRUE(told(u"Warning"_s).startsWith("All sites are in one single row."_L1));
}

TEST_F(SummaryAfterAnImport, ForgetsTheAdjustmentsOfTheSurveyBefore) {
    surveyUnderTest().applied = {{2, 0}, {1, -3}};
    expectGenericReport(1, 0);
    importLines("1,1,5\n", 4);
    EXPECT_EQ(totalsText(theSurvey().applied, true), "Since the import: EM1 unchanged, EM2 unchanged");
}

TEST_F(SummaryAfterAnImport, FollowsWhatIsDoneToTheSurvey) {
    expectGenericReport(5, 2);
    importLines(kTwoRows, 0);
    deleteRow(1);
    EXPECT_EQ(told(u"Sites"_s), u"2"_s);
    EXPECT_EQ(told(u"Rows"_s), u"1"_s);
    EXPECT_EQ(told(u"X"_s) + told(u"XTo"_s), u"30.0030.00"_s);
    EXPECT_EQ(told(u"Lines"_s), u"7"_s) << "the file is the same";
}

TEST_F(SummaryAfterAnImport, ShowsPathAndFirstLinesOfTheLogWhenNoLineWasOfUse) {
    expectGenericReport(0, 7);
    importLines("a,1,1\nb,1,1\n<i>c</i>,1,1\nd,1,1\ne,1,1\nf,1,1\ng,1,1\n", 4);
    ASSERT_FALSE(main->mnuEL->isEnabled());
    EXPECT_EQ(main->lblInvitation->text(), u"The survey has no sites."_s);
    EXPECT_TRUE(main->surveySummary->text().contains(u"Error log: "_s + fromPath(folder / "error_log.dat")));
    EXPECT_EQ(told(u"LogLine3"_s), u"Line # 3 <i>c</i> 1 1  -> non-numeric X-coord data"_s);
    EXPECT_TRUE(tells(u"LogLine5"_s));
    EXPECT_FALSE(tells(u"LogLine6"_s));
    followTheLink();
    EXPECT_EQ(started, QStringList{fromPath(folder / "error_log.dat")});
}

TEST_F(SummaryAfterAnImport, DoesNotPointToALogOfAnotherImport) {
    std::filesystem::create_directory(folder / "error_log.dat");
    boxes.tellBeginning(u"The error log could not be written:\n"_s);
    expectGenericReport(0, 1);
    importLines("x,1,5\n", 4);
    EXPECT_TRUE(told(u"Warning"_s).startsWith("The error log could not be written: "_L1));
    EXPECT_FALSE(tells(u"Log"_s));
    EXPECT_FALSE(tells(u"LogLink"_s));
    EXPECT_EQ(told(u"LogLine"_s), u"Line # 1 x 1 5  -> non-numeric X-coord data"_s);
}

}  // namespace tessel
