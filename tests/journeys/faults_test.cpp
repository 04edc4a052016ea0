// SPDX-License-Identifier: GPL-3.0-or-later
// What fails under the program's hands, in the real windows: it says what, where and why; the survey and the
// files stay as they were; and the program goes on.
#include "desktop/Printing.h"
#include "journal/journal.h"
#include "support/RunningProgram.h"
#include "support/file_size_limit.h"
#include "support/reads.h"

namespace tessel {

namespace {

// Enough lines to be read in several blocks.
constexpr int kSites = 40'000;

class Faults : public testing::Test, protected RunningProgram {
  protected:
    Faults() : RunningProgram(shortSurvey()) {}

    // Survey and log are those of before, and what was refused works as soon as nothing is in its way.
    void expectAllAsBefore() {
        expectSurveyAndLogAsBefore();
        EXPECT_FALSE(theSession().DataSaved);
        exportTo(folder / "afterwards.txt");
        EXPECT_FALSE(readFile(folder / "afterwards.txt").empty());
    }

    // Lets something happen when the windows of the import have been filled in.
    void importAnd(const std::function<void()>& meanwhile) {
        importTrimbleFile(*main, sensorEntries(file), [&](const QWidget& window) {
            if (window.objectName() == u"frmIniDisplay"_s) meanwhile();
        });
    }
    // The same before one of the readings.
    void importAnd(int reading, const std::function<void(int)>& act) {
        std::optional<BeforeReading> moment;
        importAnd([&] { moment.emplace(reading, act); });
        EXPECT_TRUE(moment && moment->happened());
    }
    void printEverywhere(const std::function<void()>& expect);

    const std::string file = folder / "survey.dat";
};

}  // namespace

TEST_F(Faults, ADiskThatIsFullWhileTheErrorLogIsWrittenLeavesTheOldLogAndIsReported) {
    writeFile(file, sensorLines(10, 20'000));
    boxes.tell(u"The error log could not be written:\n"_s + fromPath(folder / "error_log.dat") +
               u" cannot be written: File too large\n\nThe file has been read without it."_s);
    expectTrimbleReport(10, 20000);
    {
        const FileSizeLimit limit(300'000);
        importTrimbleFile(*main, sensorEntries(file));
    }
    before = theSurvey();
    EXPECT_EQ(before.NumSites, 10);
    expectAllAsBefore();
}

TEST_F(Faults, ASourceThatVanishesMeanwhileIsReported) {
    writeFile(file, sensorLines(10));
    boxes.tell(fromPath(file) + u" cannot be opened: No such file or directory"_s);
    importAnd([this] { std::filesystem::remove(file); });
    expectAllAsBefore();
}

TEST_F(Faults, ACardThatCannotBeReadOrIsPulledOutMeanwhileIsReported) {
    writeFile(file, sensorLines(kSites));
    for (const int reading : {1, 2}) {
        boxes.tell(fromPath(file) + u" cannot be read: Input/output error"_s);
        importAnd(reading, breakDevice);
        EXPECT_NE(main->cursor().shape(), Qt::WaitCursor);
    }
    expectAllAsBefore();
}

// Who holds a file open keeps it.
TEST_F(Faults, AFileThatIsReplacedWhileItIsReadIsReadToItsEnd) {
    const auto replace = [this](int) {
        writeFile(folder / "other.dat", "no number anywhere");
        std::filesystem::rename(folder / "other.dat", file);
    };
    writeFile(file, sensorLines(kSites));
    expectTrimbleReport(kSites, 0);
    importAnd(2, replace);
    EXPECT_EQ(theSurvey().NumSites, kSites);
    writeFile(file, sensorLines(kSites));
    expectGenericReport(kSites, 0);
    chooseItem(*main, u"mnuOpen2"_s);
    QWidget& window = shownWindow(u"frmGeneric"_s);
    typeInto(window, u"txtGFile"_s, fromPath(file));
    clickOn(window, u"optCF_4"_s);
    const BeforeReading moment(2, replace);
    clickOn(window, u"cmdImport"_s);
    EXPECT_TRUE(moment.happened());
    EXPECT_EQ(theSurvey().NumSites, kSites);
}

TEST_F(Faults, ASourceThatIsNoFileIsRefusedBeforeItIsShown) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    const std::pair<std::string, QString> sources[] = {{"/dev/zero", u"it is not a regular file"_s},
                                                       {folder / "pipe", u"it is not a regular file"_s},
                                                       {folder.path(), u"it is a folder"_s}};
    for (const auto& [source, reason] : sources) {
        boxes.tell(fromPath(source) + u" cannot be read: "_s + reason);
        chooseFile(source);
        chooseItem(*main, u"mnuOpen"_s);
        QWidget& parameters = shownWindow(u"frmDataControl"_s);
        typeInto(parameters, u"Text2"_s, u"20"_s);
        clickOn(parameters, u"Command1"_s);
        EXPECT_FALSE(isShown(u"frmIniDisplay"_s));
    }
    expectAllAsBefore();
}

// Prints from every window that can, and closes it.
void Faults::printEverywhere(const std::function<void()>& expect) {
    chooseItem(*main, u"mnuX"_s);
    expect();
    clickOn(*main, u"Command6"_s);
    for (const auto& [item, name] :
         {std::pair{u"mnuHist"_s, u"frmHistForm"_s}, {u"mnuSigCorr"_s, u"frmSigCorrStruct"_s}}) {
        chooseItem(*main, item);
        QWidget& window = shownWindow(name);
        expect();
        chooseItem(window, u"mnuPrint"_s);
        EXPECT_EQ(boxes.pending(), 0) << name.toStdString();
        EXPECT_NE(window.cursor().shape(), Qt::WaitCursor);
        window.close();
        waitUntilClosed(name);
    }
}

TEST_F(Faults, APrinterThatIsGoneIsReported) {
    setDefaultPrinterName([] { return u"no-such-printer"_s; });
    printEverywhere([this] { boxes.tellBeginning(u"no-such-printer cannot be printed on: "_s); });
    expectAllAsBefore();
}

TEST_F(Faults, APageForWhichThereIsNoRoomIsReportedAndLeavesTheOldOne) {
    setDefaultPrinterName([] { return QString(); });
    const std::string page = folder / "page.pdf";
    chooseFile(page);
    writeFile(page, "old");
    {
        const FileSizeLimit limit(100);
        printEverywhere(
            [&] { boxes.tellBeginning(fromPath(page) + u" cannot be written: there is no room"_s); });
    }
    EXPECT_EQ(readFile(page), "old");
    expectAllAsBefore();
}

}  // namespace tessel
