// SPDX-License-Identifier: GPL-3.0-or-later
// What fails under the program's hands, in the real windows: it says what, where and why; the survey and the
// files stay as they were; and the program goes on.
#include "desktop/FileDialogs.h"
#include "desktop/Printing.h"
#include "desktop/TextEditor.h"
#include "support/FullDisk.h"
#include "support/RunningProgram.h"
#include "support/survey_under_test.h"

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

    // The export to this file fails with this reason; its window stays open for another name.
    void expectExportFails(const std::string& file, const QString& reason) {
        boxes.tell(fromPath(file) + u" cannot be written: "_s + reason);
        tryToExport(file);
        EXPECT_TRUE(isShown(u"frmOutput"_s));
        clickOn(shownWindow(u"frmOutput"_s), u"Command3"_s);
        waitUntilClosed(u"frmOutput"_s);
    }
    void tryToExport(const std::string& file, const std::function<void()>& meanwhile = {}) {
        setFileResponder([file](const FileQuestion&) { return fromPath(file); });
        chooseItem(*main, u"mnuSave"_s);
        QWidget& window = shownWindow(u"frmOutput"_s);
        clickOn(window, u"Command1"_s);
        if (meanwhile) meanwhile();
        clickOn(window, u"Command2"_s);
    }

    void printEverywhere(const std::function<void()>& expect);

    std::size_t filesIn(const std::string& path) const {
        const std::filesystem::directory_iterator files(path);
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }
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

TEST_F(Faults, ADiskThatIsFullWhileTheTransectFileIsWrittenLeavesTheOldOne) {
    std::vector<MadeSite> sites;
    for (int i = 0; i < 20'000; ++i)
        sites.push_back({double(i), 5, 20, 30, 1});
    surveyUnderTest() = before = madeSurvey(sites);
    writeFile(folder / "out.txt", "old");
    const std::size_t files = filesIn(folder.path());
    {
        const FullDisk limit(300'000);
        expectExportFails(folder / "out.txt", u"File too large"_s);
    }
    EXPECT_EQ(readFile(folder / "out.txt"), "old");
    EXPECT_EQ(filesIn(folder.path()), files);
    expectAllAsBefore();
}

TEST_F(Faults, AFolderRemovedBetweenChoosingAndWritingIsReported) {
    std::filesystem::create_directory(folder / "card");
    boxes.tell(fromPath(folder / "card/out.txt") + u" cannot be written: No such file or directory"_s);
    tryToExport(folder / "card/out.txt", [&] { std::filesystem::remove(folder / "card"); });
    std::filesystem::create_directory(folder / "card");
    boxes.tell(u"Output data saved to "_s + fromPath(folder / "card/out.txt"), u"VARN-Tesl"_s);
    clickOn(shownWindow(u"frmOutput"_s), u"Command2"_s);
    EXPECT_FALSE(readFile(folder / "card/out.txt").empty());
}

TEST_F(Faults, ATargetThatIsAFolderADeviceOrAPipeIsRefused) {
    expectExportFails(folder.path(), u"Is a directory"_s);
    expectExportFails("/dev/null", u"Invalid argument"_s);
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    expectExportFails(folder / "pipe", u"Invalid argument"_s);
    expectAllAsBefore();
}

TEST_F(Faults, AReadOnlyTargetIsRefused) {
    writeFile(folder / "out.txt", "old");
    std::filesystem::permissions(folder / "out.txt", std::filesystem::perms::owner_read);
    expectExportFails(folder / "out.txt", u"Permission denied"_s);
    EXPECT_EQ(readFile(folder / "out.txt"), "old");
    expectAllAsBefore();
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

TEST_F(Faults, AFileNameThatIsNotUtf8IsLegibleInWhatIsReported) {
    const QString name = fromPath(folder / "field\xFC.dat");
    boxes.tell(fromPath(folder / "field\\xFC.dat") + u" cannot be opened: No such file or directory"_s);
    setFileResponder([name](const FileQuestion&) { return name; });
    chooseItem(*main, u"mnuOpen"_s);
    QWidget& parameters = shownWindow(u"frmDataControl"_s);
    typeInto(parameters, u"Text2"_s, u"20"_s);
    clickOn(parameters, u"Command1"_s);
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
