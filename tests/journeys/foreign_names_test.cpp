// SPDX-License-Identifier: GPL-3.0-or-later
// A program, a survey and files whose names are not Unicode, because another system has written them: all of
// it works, by choosing, typing, dropping and pasting, and every name can be read in what is shown.
#include "desktop/Printing.h"
#include "journal/HistoryModel.h"
#include "journal/journal.h"
#include "support/RunningProgram.h"

namespace tessel {

namespace {

namespace fs = std::filesystem;

class ForeignNames : public testing::Test, protected RunningProgram {
  protected:
    ForeignNames() : RunningProgram(shortSurvey()) {
        fs::create_directory(place);
        fs::copy(fs::path(TESSEL_SOURCE_DIR) / "helpdocs", place + "/helpdocs");
        theSession().AppDir = theSession().DataDir = place;
        writeFile(place + "/fr\xFCh.csv", "1,2,30,1\n2,2,31,1\n");
        writeFile(place + "/fr\xFCh.dat",
                  "1000000 2000000      12\r\n1000001 2000000      13\r\nnothing\r\n");
    }

    // An editor that writes down what it has been given.
    std::string startedEditor() {
        const std::string editor = place +
                                   "/\xE9"
                                   "diteur";
        writeFile(editor, "#!/bin/sh\nprintf '%s' \"$1\" > \"$0.new\" && mv \"$0.new\" \"$0.opened\"\n");
        fs::permissions(editor, fs::perms::all);
        theSession().TextEditor = editor + " ";
        return editor + ".opened";
    }
    static std::string whatIsOpened(const std::string& note) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return fs::exists(note); }));
        const std::string opened = readFile(note);
        fs::remove(note);
        return opened;
    }

    void importGeneric(const std::function<void(QWidget&)>& name) {
        chooseItem(*main, u"mnuOpen2"_s);
        QWidget& window = shownWindow(u"frmGeneric"_s);
        name(window);
        clickOn(window, u"optCF_0"_s);
        expectGenericReport(2, 0);
        clickOn(window, u"cmdImport"_s);
        waitUntilClosed(u"frmGeneric"_s);
        EXPECT_EQ(theSurvey().NumSites, 2);
        EXPECT_EQ(theSession().InputFileName, place + "/fr\xFCh.csv");
    }

    const std::string place = folder / "Gel\xE4nde 100%1 'n";
    const QString legiblePlace = fromPath(folder.path()) + u"/Gel\\xE4nde 100%1 'n"_s;
    const QString csv = fromPath(place + "/fr\xFCh.csv");
    const QString address =
        u"file://"_s + QString::fromLatin1(QByteArray::fromStdString(toPath(csv)).toPercentEncoding("/"));
};

}  // namespace

TEST_F(ForeignNames, GoThroughImportLogAndExport) {
    expectTrimbleReport(2, 1);
    importTrimbleFile(*main, sensorEntries(place + "/fr\xFCh.dat"));
    EXPECT_EQ(theSurvey().NumSites, 2);
    EXPECT_EQ(readFile(place + "/error_log.dat"), "Line # 3 nothing  -> non-numeric X-coord data\r\n");
    const std::string note = startedEditor();
    chooseItem(*main, u"mnuEL"_s);
    EXPECT_EQ(whatIsOpened(note), place + "/error_log.dat");
    exportTo(place + "/aus\xFC.txt", u"1"_s, [&](QWidget& window) {
        EXPECT_EQ(controlAs<QLineEdit>(window, u"Text2"_s).text(), legiblePlace + u"/aus\\xFC.txt"_s);
    });
    EXPECT_EQ(readFile(place + "/aus\xFC.txt").find(" 1000000 "), 0U);
}

TEST_F(ForeignNames, CanBeReadInWhatIsToldOfAnImport) {
    expectTrimbleReport(2, 1);
    importTrimbleFile(*main, sensorEntries(place + "/fr\xFCh.dat"));
    HistoryModel history;
    history.follow();
    const QString told = history.data(history.index(1, HistoryModel::kWhat), Qt::DisplayRole).toString();
    EXPECT_EQ(told, u"Imported fr\\xFCh.dat with 2 sites"_s);
    EXPECT_EQ(main->mnuUndo->text(), u"&Undo: import fr\\xFCh.dat"_s);
    chooseItem(*main, u"mnuUndo"_s);
    EXPECT_EQ(main->lblMessage->text(), u"Taken back: "_s + told);
}

TEST_F(ForeignNames, AreTakenByTheGenericImportHoweverTheyAreGiven) {
    importGeneric([this](QWidget& window) {
        chooseFile(toPath(csv));
        clickOn(window, u"cmdBrowse"_s);
    });
    for (const QString& typed : {legible(csv), address, u" "_s + address + u" "_s})
        importGeneric([&](QWidget& window) { typeInto(window, u"txtGFile"_s, typed); });
    importGeneric([&](QWidget& window) {
        QMimeData words, dropped;
        words.setText(u"words"_s);
        dropped.setData(u"text/uri-list"_s, address.toLatin1() + "\r\n");
        QWidget& box = control(window, u"txtGFile"_s);
        for (const QMimeData* data : {&words, &dropped}) {
            QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
            enter.ignore();
            QCoreApplication::sendEvent(&box, &enter);
            EXPECT_EQ(enter.isAccepted(), data == &dropped);
        }
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&box, &drop);
        EXPECT_EQ(toPath(controlAs<QLineEdit>(window, u"txtGFile"_s).text()), toPath(csv));
    });
}

TEST_F(ForeignNames, OfTheProgramsFolderStillLeadToItsHelp) {
    const std::string note = startedEditor();
    chooseItem(*main, u"mnuHmain1"_s);
    QWidget& help = shownWindow(u"frmHelpTesl"_s);
    clickOn(help, u"Command1"_s);
    EXPECT_EQ(whatIsOpened(note), place + "/helpdoc.rtf");
    EXPECT_EQ(readFile(place + "/helpdoc.rtf"), readFile(place + "/helpdocs/hdoc101.rtf"));
    help.close();
    fs::remove_all(place + "/helpdocs");
    const std::pair<QString, int> missing[] = {
        {u"mnuHmain1"_s, 101}, {u"mnuHmain2"_s, 102}, {u"mnuHmain3"_s, 103}, {u"mnuPlotHelp"_s, 111}};
    for (const auto& [item, document] : missing) {
        boxes.tell(u"Warning!  File resource error.  VARN can not find the following file:\n"_s +
                   legiblePlace + u"/helpdocs/hdoc%1.rtf"_s.arg(document));
        chooseItem(*main, item);
        EXPECT_FALSE(isShown(u"frmHelpTesl"_s));
    }
}

TEST_F(ForeignNames, AreTakenForPrintedPages) {
    setDefaultPrinterName([] { return QString(); });
    chooseFile(place + "/p\xE4ge.pdf");
    theSession().InputFileName = place + "/fr\xFCh.dat";
    chooseItem(*main, u"mnuX"_s);
    clickOn(*main, u"Command6"_s);
    EXPECT_EQ(readFile(place + "/p\xE4ge.pdf").find("%PDF"), 0U);
}

TEST_F(ForeignNames, AreTakenForATextEditor) {
    const std::string note = startedEditor();
    const std::string editor = theSession().TextEditor;
    theSession().TextEditor = "/nowhere ";
    chooseFile(editor.substr(0, editor.size() - 1));
    boxes.ask(true, kEditorQuestion);
    boxes.tell(u"Note: the new selected text editor is "_s + legiblePlace + u"/\\xE9diteur "_s);
    chooseItem(*main, u"mnusetDTE"_s);
    EXPECT_EQ(theSession().TextEditor, editor);
    writeFile(place + "/error_log.dat", "log");
    chooseItem(*main, u"mnuEL"_s);
    EXPECT_EQ(whatIsOpened(note), place + "/error_log.dat");
}

}  // namespace tessel
