// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"
#include "app/survey.h"
#include "journeys/random/RandomSession.h"
#include "support/UserDriver.h"

namespace tessel {

// Help documents
// ---------------------------------------------------------------------------------------------

void RandomSession::askForHelp(int document, const Action& ask) {
    if (document % 2 == 1) {
        ask();
        return readHelp(document);
    }
    expect(u"Warning!  File resource error.  VARN can not find the following file:\n"_s +
           QString::fromStdString(folder_ / ("helpdocs/hdoc" + std::to_string(document) + ".rtf")));
    ask();
    same("visible frmHelpTesl", isShown(u"frmHelpTesl"_s), false);
}

void RandomSession::helpOf(QWidget& window, int document, const QString& button) {
    if (!chance(30)) return;
    askForHelp(document, [&] {
        if (chance(50) && window.findChild<QAction*>(button) != nullptr)
            chooseItem(window, button);
        else if (chance(50) && window.findChild<QWidget*>(button) != nullptr)
            clickOn(window, button);
        else
            pressKey(window, Qt::Key_F1);
    });
    bringToFront(window);
}

void RandomSession::readHelp(int document) {
    QWidget& viewer = shownWindow(u"frmHelpTesl"_s);
    const QString title = u"Document %1"_s.arg(document);
    sameText("a help document", controlAs<QTextBrowser>(viewer, u"RTB1"_s).toPlainText().trimmed(),
             title + u"\nOn soil and surveys."_s);
    if (chance(30)) {
        const bool there = chance(50);
        typeInto(viewer, u"txtFind"_s, there ? u"surveys"_s : u"zebra"_s);
        pressKey(control(viewer, u"txtFind"_s), Qt::Key_Return);
        sameText("the word found", controlAs<QTextBrowser>(viewer, u"RTB1"_s).textCursor().selectedText(),
                 there ? u"surveys"_s : QString());
    }
    if (chance(30)) {
        expectEditor(folder_ / "helpdoc.rtf");
        clickOn(viewer, u"Command1"_s);
        const std::string name = "helpdocs/hdoc" + std::to_string(document) + ".rtf";
        if (readFile(folder_ / "helpdoc.rtf") != readFile(folder_ / name)) differ("helpdoc.rtf differs");
    }
    leave(viewer, u"Command2"_s);
    same("visible frmHelpTesl", isShown(u"frmHelpTesl"_s), false);
}

// The text editor
// --------------------------------------------------------------------------------------------

// Now and then it cannot be started.
void RandomSession::expectEditor(const std::string& path) {
    const QString file = QString::fromStdString(path);
    const bool fallback = textEditor_.startsWith(u"c:"_s);
    starts_.append(fallback ? QStringList{u"desktop"_s, file} : QStringList{textEditor_.chopped(1), file});
    editorFails_ = chance(15);
    if (!editorFails_) return;
    reached_.note("an editor that fails");
    expectFailure(path + " cannot be opened: ");
}

bool RandomSession::respondToStart(const QStringList& command) {
    if (starts_.isEmpty()) {
        differ("unexpected program: " + command.join(u' ').toStdString());
        return false;
    }
    sameText("a program started", command.join(u'|'), starts_.takeFirst().join(u'|'));
    return !editorFails_;
}

void RandomSession::changeEditor() {
    const bool yes = chance(75);
    expectQuestion(yes,
                   u"Note: you should use the PELR program if you wish to perminantly\n"
                   u"change the default text editor used by all VARN programs.\n\n"
                   u"However, you can temporarily reset the text editor now (for this session only).\n\n"
                   u"Would you like to temporarily reset the current, default text editor?"_s);
    if (yes) {
        const QString chosen = oneOf(std::vector<QString>{u"/bin/true"_s, u"/bin/cat"_s, u""_s});
        expectFile(chosen);
        textEditor_ = chosen.isEmpty() ? u"c:\\windows\\write.exe "_s : chosen + u' ';
        expect((chosen.isEmpty() ? u"Note: the text editor has been reset to the default program "_s
                                 : u"Note: the new selected text editor is "_s) +
               textEditor_);
    }
    chooseItem(*main_, u"mnusetDTE"_s);
}

void RandomSession::showErrorLog() {
    if (!canChoose("mnuEL")) return;
    expectEditor(folder_ / "error_log.dat");
    chooseItem(*main_, u"mnuEL"_s);
}

// Other items
// ------------------------------------------------------------------------------------------------

void RandomSession::changeResolution() {
    printScale_ = 1 << below(3);
    const int dpi = 300 * printScale_;
    expect(u"The printer resolution has been temporarily redefined to be %1 DPI."_s.arg(dpi));
    chooseItem(*main_, u"mnuDPI%1"_s.arg(dpi));
}

void RandomSession::otherItems() {
    static const std::map<const char16_t*, int> kHelpItems = {
        {u"mnuHmain1", 101}, {u"mnuHmain2", 102}, {u"mnuHmain3", 103}, {u"mnuPlotHelp", 111}};
    switch (below(6)) {
        case 0:
            return changeResolution();
        case 1:
            return changeEditor();
        case 2: {
            const auto item = std::next(kHelpItems.begin(), below(static_cast<int>(kHelpItems.size())));
            return askForHelp(item->second, [&] { chooseItem(*main_, QString::fromUtf16(item->first)); });
        }
        case 3:
            // The help of what the window shows.
            return askForHelp(editing_           ? 114
                              : chart_.isEmpty() ? 101
                                                 : 111,
                              [&] { pressKey(*main_, Qt::Key_F1); });
        case 4: {
            chooseItem(*main_, u"mnuHelpAbout"_s);
            QWidget& window = shownWindow(u"frmAbout"_s);
            helpOf(window, 101);
            return leave(window, u"Command1"_s);
        }
        default:
            return showErrorLog();
    }
}

void RandomSession::tryToClose() {
    expectQuestion(false,
                   u"Attention: you have not exported an output VARN data file yet!\n"
                   u"Are you sure that you wish to exit the program?"_s);
    const int way = below(3);
    if (way == 0)
        main_->close();
    else if (way == 1)
        chooseItem(*main_, u"mnuExit"_s);
    else
        pressKey(*main_, Qt::Key_Q, Qt::ControlModifier);
    same("visible frmMain", main_->isVisible(), true);
}

}  // namespace tessel
