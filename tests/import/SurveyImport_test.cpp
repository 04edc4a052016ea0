// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/SurveyImport.h"

#include "base/session.h"
#include "import/frmDataControl.h"
#include "import/frmGeneric.h"
#include "import/frmIniDisplay.h"
#include "journal/journal.h"
#include "support/ImportTest.h"

namespace tessel {

namespace {

// Files of lines "xxxx yyyy eeee".
class TrimbleImportChain : public ImportTest {
  protected:
    void goThroughControl(const QString& minDistance) {
        import.mnuOpen_Click();
        auto* const window = main.findChild<frmDataControl*>();
        ASSERT_TRUE(window != nullptr && window->isVisible());
        EXPECT_EQ(window->windowModality(), Qt::WindowModal);
        type(*window->Text2, minDistance);
        click(*window->Option3);
        click(*window->Command1);
    }
    frmIniDisplay* display() const {
        auto* const window = main.findChild<frmIniDisplay*>();
        return window != nullptr && window->isVisible() ? window : nullptr;
    }
    void goThroughFormat() {
        frmIniDisplay* const window = display();
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(window->windowModality(), Qt::WindowModal);
        for (const auto& [box, column] : {std::pair(window->Text2_0, u"1"_s),
                                          {window->Text2_1, u"4"_s},
                                          {window->Text3_0, u"6"_s},
                                          {window->Text3_1, u"9"_s},
                                          {window->Text4_0, u"11"_s},
                                          {window->Text4_1, u"14"_s}})
            box->setText(column);
        click(*window->Command1);
    }
    void importFile(std::string_view bytes) {
        chooseFile(sensorFile(bytes));
        goThroughControl(u"5"_s);
        goThroughFormat();
    }

    // One row more than there may be.
    static std::string rowsBeyondTheLimit() {
        std::string bytes;
        for (int i = 0; i < 252; ++i)
            bytes += i % 2 == 0 ? "   0    0   10\n" : "   0   99   10\n";
        return bytes;
    }

    QSignalSpy tooMany{&import, &SurveyImport::tooManyRows};
};

}  // namespace

TEST_F(TrimbleImportChain, LeadsFromTheMenuToTheReport) {
    const auto changesBefore = surveyChanges();
    boxes.tell(trimbleReport(3, 1), kTrimbleReportTitle);
    importFile("   0    0   10\r\n   9    1   20\r\n   x    1   20\r\n   9   50   30\r\n");
    const Survey& survey = theSurvey();
    EXPECT_EQ(survey.NumSites, 3);
    EXPECT_EQ(survey.SiteData(kEM1, 2), 30);
    EXPECT_FALSE(survey.SiteIDPresent || survey.TwoEMColumns);
    EXPECT_EQ(survey.NumRows, 2);
    EXPECT_EQ(survey.DistanceMode, 3);
    EXPECT_EQ(survey.MaxYDist, 49);
    EXPECT_FALSE(theSession().DataSaved);
    EXPECT_EQ(theSession().InputFileName, folder / "sensor file ü.dat");
    EXPECT_EQ(errorLog(), "Line # 3    x    1   20  -> non-numeric X-coord data\r\n");
    EXPECT_EQ(imported.count(), 1);
    EXPECT_EQ(surveyChanges(), changesBefore + 1);
    EXPECT_EQ(tooMany.count(), 0);
    expectMenus(true, true);
    EXPECT_NE(main.cursor().shape(), Qt::WaitCursor);
    EXPECT_EQ(lastQuestion().filter, u"All Files (*.*)|*"_s);
    EXPECT_FALSE(lastQuestion().toSave);
}

TEST_F(TrimbleImportChain, ShowsTheHourglassUntilTheReportHasBeenRead) {
    Qt::CursorShape whileTold = Qt::ArrowCursor;
    setMessageResponder([&](const MessageBox& box) {
        EXPECT_EQ(box.title, kTrimbleReportTitle);
        whileTold = main.cursor().shape();
        return true;
    });
    importFile("   0    0   10\n");
    EXPECT_EQ(whileTold, Qt::WaitCursor);
    EXPECT_EQ(main.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(TrimbleImportChain, SaysWhenThereAreTooManyRows) {
    boxes.tell(trimbleReport(252, 0), kTrimbleReportTitle);
    boxes.tell(u"Too many rows: Please specify a larger distance value"_s);
    importFile(rowsBeyondTheLimit());
    EXPECT_EQ(theSurvey().NumSites, 252);
    EXPECT_EQ(theSurvey().NumRows, 0);
    EXPECT_EQ(imported.count(), 1);
    EXPECT_EQ(tooMany.count(), 1);
    expectMenus(true, true);
}

// The sites in memory and the row items, as they are while each box is read.
class WhileBoxesAreRead {
  public:
    explicit WhileBoxesAreRead(frmMain& main) {
        setMessageResponder([this, &main](const MessageBox&) {
            states << u"%1%2"_s.arg(theSurvey().NumSites)
                          .arg(main.mnuData->isEnabled() ? u" rows"_s : QString());
            return true;
        });
    }

    QStringList states;
};

TEST_F(TrimbleImportChain, PutsTheSurveyInPlaceBetweenTheReportAndWhatIsSaidOfItsRows) {
    const WhileBoxesAreRead boxesRead(main);
    importFile(rowsBeyondTheLimit());
    EXPECT_EQ(boxesRead.states, (QStringList{u"2"_s, u"252"_s})) << "the menus wait for the row dialog";
    expectMenus(true, true);

    frmGeneric window(&main);
    import.serve(window);
    window.txtGFile->setText(fromPath(sensorFile("1,2,3,2\n")));
    window.optCF_0->setChecked(true);
    window.cmdImport->click();
    EXPECT_EQ(boxesRead.states.mid(2), (QStringList{u"252 rows"_s, u"1"_s})) << "the menus follow at once";
}

TEST_F(TrimbleImportChain, LeavesTheSurveyWhenTheFileDialogIsCancelled) {
    theSession().InputFileName = "the last one";
    goThroughControl(u"5"_s);
    EXPECT_EQ(fileDialogs(), 1);
    EXPECT_EQ(display(), nullptr);
    EXPECT_EQ(theSession().InputFileName, "the last one");
    EXPECT_EQ(theSurvey().MinDistance, 5);
    expectSurveyUntouched();
}

TEST_F(TrimbleImportChain, LeavesTheSurveyWhenAWindowIsCancelled) {
    import.mnuOpen_Click();
    click(*main.findChild<frmDataControl*>()->Command2);
    EXPECT_EQ(fileDialogs(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(main.findChild<frmDataControl*>(), nullptr);

    chooseFile(sensorFile("   0    0   10\n"));
    goThroughControl(u"5"_s);
    ASSERT_NE(display(), nullptr);
    click(*display()->Check2);
    click(*display()->Command2);
    EXPECT_EQ(imported.count(), 0);
    EXPECT_FALSE(std::filesystem::exists(folder / "error_log.dat"));
    expectSurveyUntouched();
}

TEST_F(TrimbleImportChain, StartsWithItsDefaultsEachTime) {
    goThroughControl(u"5"_s);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    import.mnuOpen_Click();
    const auto* const window = main.findChild<frmDataControl*>();
    EXPECT_TRUE(window->Option1->isChecked());
    EXPECT_EQ(window->Text1->text(), u"-10"_s);
    EXPECT_EQ(window->Text2->text(), QString());
}

TEST_F(TrimbleImportChain, OffersThePositionsAcceptedLastToTheNextFile) {
    const auto chooseAnother = [this](std::string_view bytes) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // the windows before
        chooseFile(sensorFile(bytes));
        goThroughControl(u"5"_s);
        ASSERT_NE(display(), nullptr);
    };
    chooseAnother("   0    0   10\n");
    EXPECT_FALSE(display()->cmdLast->isEnabled());
    click(*display()->Command2);
    chooseAnother("   0    0   10\n");
    EXPECT_FALSE(display()->cmdLast->isEnabled());  // cancelled is not accepted
    boxes.tell(trimbleReport(1, 0), kTrimbleReportTitle);
    goThroughFormat();
    chooseAnother("   7    8   11\n");
    click(*display()->cmdLast);
    boxes.tell(trimbleReport(1, 0), kTrimbleReportTitle);
    click(*display()->Command1);
    EXPECT_EQ(theSurvey().SiteData(kX, 0), 7);
    EXPECT_EQ(theSurvey().SiteData(kEM1, 0), 11);
}

TEST_F(TrimbleImportChain, ReportsAFileThatVanishesBeforeItIsShown) {
    chooseFile(folder / "gone.dat");
    boxes.tell(fromPath(folder / "gone.dat") + u" cannot be opened: No such file or directory"_s);
    goThroughControl(u"5"_s);
    EXPECT_EQ(display(), nullptr);
    expectSurveyUntouched();
}

}  // namespace tessel
