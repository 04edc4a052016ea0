// SPDX-License-Identifier: GPL-3.0-or-later
// What fails under the program's hands, in the real windows: it says what, where and why; the survey and the
// files stay as they were; and the program goes on.
#include "desktop/FileDialogs.h"
#include "desktop/Printing.h"
#include "desktop/TextEditor.h"
#include "journal/journal.h"
#include "support/FullDisk.h"
#include "support/RunningProgram.h"

namespace tessel {

namespace {

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

    void printEverywhere(const std::function<void()>& expect);
};

}  // namespace

TEST_F(Faults, ADiskThatIsFullWhileTheErrorLogIsWrittenLeavesTheOldLogAndIsReported) {
    writeFile(folder / "survey.dat", sensorLines(10, 20'000));
    boxes.tell(u"The error log could not be written:\n"_s + fromPath(folder / "error_log.dat") +
               u" cannot be written: File too large\n\nThe file has been read without it."_s);
    expectTrimbleReport(10, 20000);
    {
        const FullDisk limit(300'000);
        importTrimbleFile(*main, sensorEntries(folder / "survey.dat"));
    }
    before = theSurvey();
    EXPECT_EQ(before.NumSites, 10);
    expectAllAsBefore();
}

TEST_F(Faults, AFolderRemovedBetweenChoosingAndWritingIsReported) {
    std::filesystem::create_directory(folder / "card");
    setFileResponder([this](const FileQuestion&) { return fromPath(folder / "card/out.txt"); });
    chooseItem(*main, u"mnuSave"_s);
    QWidget& window = shownWindow(u"frmOutput"_s);
    clickOn(window, u"Command1"_s);
    std::filesystem::remove(folder / "card");
    boxes.tell(fromPath(folder / "card/out.txt") + u" cannot be written: No such file or directory"_s);
    clickOn(window, u"Command2"_s);
    std::filesystem::create_directory(folder / "card");
    boxes.tell(u"Output data saved to "_s + fromPath(folder / "card/out.txt"), u"VARN-Tesl"_s);
    clickOn(window, u"Command2"_s);
    EXPECT_FALSE(readFile(folder / "card/out.txt").empty());
}

TEST_F(Faults, ASourceThatVanishesMeanwhileIsReported) {
    writeFile(folder / "survey.dat", sensorLines(10, 0));
    boxes.tell(fromPath(folder / "survey.dat") + u" cannot be opened: No such file or directory"_s);
    importTrimbleFile(*main, sensorEntries(folder / "survey.dat"), [&](const QWidget& window) {
        if (window.objectName() == u"frmIniDisplay"_s) std::filesystem::remove(folder / "survey.dat");
    });
    expectAllAsBefore();
}

TEST_F(Faults, ASourceThatIsNoFileIsRefusedBeforeItIsShown) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    const std::pair<std::string, QString> sources[] = {{"/dev/zero", u"it is not a regular file"_s},
                                                       {folder / "pipe", u"it is not a regular file"_s},
                                                       {folder.path(), u"it is a folder"_s}};
    for (const auto& [source, reason] : sources) {
        boxes.tell(fromPath(source) + u" cannot be read: "_s + reason);
        setFileResponder([file = source](const FileQuestion&) { return fromPath(file); });
        chooseItem(*main, u"mnuOpen"_s);
        QWidget& parameters = shownWindow(u"frmDataControl"_s);
        typeInto(parameters, u"Text2"_s, u"20"_s);
        clickOn(parameters, u"Command1"_s);
        EXPECT_FALSE(isShown(u"frmIniDisplay"_s));
    }
    expectAllAsBefore();
}

TEST_F(Faults, NamesWithEveryKindOfCharacterGoThroughImportAndExport) {
    const QString names[] = {u"two  blanks .dat"_s, u"\"quoted\" 'twice'.dat"_s,  u"Grüße Ω.dat"_s,
                             u"100%1 %n %s.dat"_s,  u"; rm -rf `ls` $HOME.dat"_s, QString(200, u'x')};
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        const std::string path = folder / name.toStdString();
        writeFile(path, sensorLines(10, 0));
        expectTrimbleReport(10, 0);
        importTrimbleFile(*main, sensorEntries(path));
        exportTo(path);
        EXPECT_EQ(readFile(path).find(" 1000000 "), 0U);
        expectGenericReport(10, 0);
        importGeneric(path, 0);
        EXPECT_EQ(theSurvey().NumSites, 10);
    }
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

TEST_F(Faults, APageThatCannotBeWrittenIsReportedAndLeavesTheOldOne) {
    setDefaultPrinterName([] { return QString(); });
    const QString page = fromPath(folder / "page.pdf");
    setFileResponder([page](const FileQuestion&) { return page; });
    writeFile(folder / "page.pdf", "old");
    {
        const FullDisk limit(100);
        printEverywhere([&] { boxes.tellBeginning(page + u" cannot be written: there is no room"_s); });
    }
    EXPECT_EQ(readFile(folder / "page.pdf"), "old");
    std::filesystem::permissions(folder / "page.pdf", std::filesystem::perms::owner_read);
    printEverywhere([&] { boxes.tell(page + u" cannot be written: Permission denied"_s); });
    EXPECT_EQ(readFile(folder / "page.pdf"), "old");
    expectAllAsBefore();
}

TEST_F(Faults, AnEditorThatCannotBeStartedIsReported) {
    const QString log = fromPath(folder / "error_log.dat");
    theSession().TextEditor = folder / "no such editor ";
    boxes.tell(log + u" cannot be opened: there is no program "_s + fromPath(folder / "no such editor"));
    chooseItem(*main, u"mnuEL"_s);
    writeFile(folder / "editor",
              "\x7f"
              "ELF but broken");
    std::filesystem::permissions(folder / "editor", std::filesystem::perms::owner_all);
    theSession().TextEditor = folder / "editor ";
    boxes.tell(log + u" cannot be opened: "_s + fromPath(folder / "editor") + u" cannot be started"_s);
    chooseItem(*main, u"mnuEL"_s);
    expectAllAsBefore();
}

}  // namespace tessel
