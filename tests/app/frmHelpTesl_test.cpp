// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmHelpTesl.h"

#include "app/HelpOpener.h"
#include "app/frmMain.h"
#include "app/help_documents.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "desktop/TextEditor.h"
#include "support/ExpectedBoxes.h"
#include "support/UserDriver.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

const QByteArray kDocument =
    "{\\rtf1\\ansi{\\b Finding rows}\\par A row ends where the gap is wide.\\par The next row begins there. "
    "See {\\field{\\*\\fldinst HYPERLINK \"http://example.org\"}{\\fldrslt the page}}.\\par}";

// A program folder with help documents, and a text editor that only notes what it was given.
class HelpViewer : public testing::Test {
  protected:
    HelpViewer() {
        theSession().AppDir = folder_.path();
        theSession().DataDir = folder_.path();
        theSession().TextEditor = "/bin/true ";
        std::filesystem::create_directory(folder_ / "helpdocs");
        writeDocument(101, kDocument);
        setProgramStarter([this](const EditorCommand& command) {
            started_ << command.arguments;
            return editorStarts_;
        });
    }
    ~HelpViewer() override {
        if (frmHelpTesl* window = viewer()) window->close();
    }

    void writeDocument(int number, const QByteArray& bytes) const {
        writeFile(documentPath(number), bytes.toStdString());
    }
    std::string documentPath(int number) const {
        return folder_ / ("helpdocs/hdoc" + std::to_string(number) + ".rtf");
    }
    static QList<frmHelpTesl*> viewers() {
        QList<frmHelpTesl*> all;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* window = qobject_cast<frmHelpTesl*>(widget)) all << window;
        return all;
    }
    static frmHelpTesl* viewer() { return viewers().value(0); }
    frmHelpTesl* open(int number = 101, QWidget* from = nullptr) {
        openHelp(from, number);
        frmHelpTesl* const window = viewer();
        EXPECT_TRUE(window != nullptr && QTest::qWaitForWindowActive(window));
        return window;
    }
    // A main window at a place, shown, and a dialog of it.
    static void showAt(QWidget& window, const QRect& place) {
        window.setGeometry(place);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    // A document that is not shown, with what is told instead.
    void expectRefused(int number, const QString& told) {
        boxes_.tell(told);
        guarded(nullptr, [number] { openHelp(nullptr, number); })();
        EXPECT_EQ(boxes_.pending(), 0);
        EXPECT_TRUE(viewer() == nullptr || !viewer()->isVisible());
    }

    TemporaryFolder folder_;
    ExpectedBoxes boxes_;
    QList<QStringList> started_;
    bool editorStarts_ = true;
};

}  // namespace

TEST_F(HelpViewer, ShowsTheDocumentUnderItsFirstLine) {
    frmHelpTesl* window = open();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->objectName(), u"frmHelpTesl"_s);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->RTB1->toPlainText().startsWith(u"Finding rows\nA row ends"_s));
    EXPECT_EQ(window->windowTitle(), u"Finding rows - Help"_s);
    EXPECT_TRUE(window->RTB1->isReadOnly());
}

TEST_F(HelpViewer, TakesTheFilesNameWhereTheDocumentHasNoTitle) {
    writeDocument(102, "{\\rtf1 " + QByteArray("A very long first paragraph. ").repeated(5) + "\\par}");
    EXPECT_EQ(open(102)->windowTitle(), u"hdoc102.rtf - Help"_s);
    writeDocument(103, "{\\rtf1}");
    EXPECT_EQ(open(103)->windowTitle(), u"hdoc103.rtf - Help"_s);
    writeDocument(106, "Plain words");
    EXPECT_EQ(open(106)->RTB1->toPlainText(), u"Plain words"_s) << "no rich text";
}

TEST_F(HelpViewer, SaysWhyADocumentCannotBeReadAndDoesNotOpen) {
    expectRefused(109, u"Warning!  File resource error.  VARN can not find the following file:\n"_s +
                           QDir::toNativeSeparators(fromPath(documentPath(109))));
    std::filesystem::create_directory(documentPath(104));
    expectRefused(104, fromPath(documentPath(104)) + u" cannot be read: it is a folder"_s);
    ASSERT_EQ(::mkfifo(documentPath(107).c_str(), 0600), 0);
    expectRefused(107, fromPath(documentPath(107)) + u" cannot be read: it is not a regular file"_s);
    std::filesystem::create_symlink("/proc/self/mem", documentPath(105));
    expectRefused(105, fromPath(documentPath(105)) + u" cannot be read: Input/output error"_s);
    writeDocument(106, "{\\rtf1}");
    std::filesystem::resize_file(documentPath(106), std::uintmax_t{65} << 20);
    expectRefused(106,
                  fromPath(documentPath(106)) + u" cannot be read: it is too large for a help document"_s);
}

TEST_F(HelpViewer, SaysThatADocumentIsTooLargeAndHandsItToTheTextEditor) {
    const QByteArray endless = "{\\rtf1 " + QByteArray(500'000, 'a') + "}";
    writeDocument(106, endless);
    frmHelpTesl* window = open(106);
    EXPECT_EQ(window->RTB1->toPlainText(),
              u"hdoc106.rtf\nThis document is too large to show. \"Open in Text Editor\" opens it."_s);
    EXPECT_EQ(window->windowTitle(), u"hdoc106.rtf - Help"_s);
    QTest::mouseClick(window->Command1, Qt::LeftButton);
    EXPECT_EQ(readFile(folder_ / "helpdoc.rtf"), endless.toStdString());
    EXPECT_EQ(started_.size(), 1);
    EXPECT_TRUE(open(101)->RTB1->toPlainText().startsWith(u"Finding rows"_s));
}

TEST_F(HelpViewer, LaysADocumentOutOnce) {
    writeDocument(108, "{\\rtf1 Title\\par " + QByteArray("line\\par ").repeated(2000) + "}");
    frmHelpTesl* window = open();
    for (const bool visible : {true, false}) {
        window->setVisible(visible);
        const QSignalSpy layouts(window->RTB1->document()->documentLayout(),
                                 &QAbstractTextDocumentLayout::documentSizeChanged);
        open(108);
        const auto high = [](const QVariantList& sizes) { return sizes[0].toSizeF().height() > 10'000; };
        EXPECT_EQ(std::count_if(layouts.begin(), layouts.end(), high), 1) << visible;
    }
}

TEST_F(HelpViewer, IsOneWindowForAllDocuments) {
    open();
    writeDocument(102, "{\\rtf1 Another\\par}");
    frmHelpTesl* window = open(102);
    EXPECT_EQ(viewers().size(), 1);
    EXPECT_EQ(window->RTB1->toPlainText(), u"Another"_s);
    EXPECT_EQ(window->RTB1->verticalScrollBar()->value(), 0);
}

TEST_F(HelpViewer, SavesTheDocumentByteForByteInTheFolderForDataAndOpensItInTheTextEditor) {
    const QByteArray odd = "{\\rtf1 a\r\n\0\xE9}\0"_ba;
    writeDocument(107, odd);
    std::filesystem::create_directory(folder_ / "data");
    theSession().DataDir = folder_ / "data";
    frmHelpTesl* window = open(107);
    QTest::mouseClick(window->Command1, Qt::LeftButton);
    EXPECT_EQ(readFile(folder_ / "data/helpdoc.rtf"), odd.toStdString());
    ASSERT_EQ(started_.size(), 1);
    EXPECT_EQ(started_[0].constLast(), fromPath(folder_ / "data/helpdoc.rtf"));
    EXPECT_TRUE(window->isVisible());
}

TEST_F(HelpViewer, SaysWhyTheTextEditorDoesNotStartOrTheCopyCannotBeWritten) {
    editorStarts_ = false;
    boxes_.tellBeginning(fromPath(folder_ / "helpdoc.rtf") + u" cannot be opened: "_s);
    QTest::mouseClick(open()->Command1, Qt::LeftButton);
    EXPECT_TRUE(viewer()->isVisible());
    EXPECT_EQ(started_.size(), 1);
    theSession().DataDir = folder_ / "gone";
    boxes_.tellBeginning(fromPath(folder_ / "gone/helpdoc.rtf") + u" cannot be written: "_s);
    QTest::mouseClick(viewer()->Command1, Qt::LeftButton);
    EXPECT_EQ(started_.size(), 1);
}

TEST_F(HelpViewer, ClosesWithItsButtonEscapeAndControlW) {
    const std::function<void()> ways[] = {
        [this] { QTest::mouseClick(open()->Command2, Qt::LeftButton); },
        [this] { QTest::keyClick(open()->RTB1, Qt::Key_Escape); },
        [this] { QTest::keyClick(open()->RTB1, Qt::Key_W, Qt::ControlModifier); },
        [this] { QTest::keyClick(open()->txtFind, Qt::Key_Escape); }};
    for (const auto& close : ways) {
        close();
        EXPECT_FALSE(viewer()->isVisible());
    }
    EXPECT_FALSE(viewer()->testAttribute(Qt::WA_QuitOnClose)) << "it does not keep the program alive";
}

TEST_F(HelpViewer, FindsAsOneTypesAndNextWithEnter) {
    frmHelpTesl* window = open();
    QTest::keyClick(window->RTB1, Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget(), window->txtFind);
    QTest::keyClicks(window->txtFind, u"ROW"_s);
    EXPECT_EQ(window->RTB1->textCursor().selectedText(), u"row"_s);
    const int first = window->RTB1->textCursor().selectionStart();
    EXPECT_EQ(first, 8);
    QTest::keyClicks(window->txtFind, u" "_s);
    const int second = window->RTB1->textCursor().selectionStart();
    EXPECT_GT(second, first) << "what is typed on is looked for from where the search stands";
    QTest::keyClick(window->txtFind, Qt::Key_Return);
    const int third = window->RTB1->textCursor().selectionStart();
    EXPECT_GT(third, second);
    QTest::keyClick(window->txtFind, Qt::Key_Return);
    EXPECT_EQ(window->RTB1->textCursor().selectionStart(), second) << "from the beginning again";
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->lblFound->text(), QString());
}

TEST_F(HelpViewer, SaysThatNothingIsFoundAndForgetsItWithTheNextDocument) {
    frmHelpTesl* window = open();
    for (const bool nextDocument : {false, true}) {
        QTest::keyClicks(window->txtFind, u"zebra"_s);
        EXPECT_EQ(window->lblFound->text(), u"Not found"_s);
        EXPECT_FALSE(window->RTB1->textCursor().hasSelection());
        nextDocument ? static_cast<void>(open()) : window->txtFind->clear();
        EXPECT_EQ(window->txtFind->text(), QString());
        EXPECT_EQ(window->lblFound->text(), QString());
    }
}

TEST_F(HelpViewer, LetsItsTextBeSelectedAndCopied) {
    frmHelpTesl* window = open();
    QTest::keyClick(window->RTB1, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(window->RTB1, Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith(u"Finding rows"_s));
    const QString before = window->RTB1->toPlainText();
    QTest::keyClicks(window->RTB1, u"x"_s);
    QTest::keyClick(window->RTB1, Qt::Key_Delete);
    EXPECT_EQ(window->RTB1->toPlainText(), before);
}

TEST_F(HelpViewer, ScrollsWithTheKeyboard) {
    writeDocument(108, "{\\rtf1 Title\\par " + QByteArray("line\\par ").repeated(200) + "}");
    frmHelpTesl* window = open(108);
    EXPECT_EQ(QApplication::focusWidget(), window->RTB1);
    QTest::keyClick(window->RTB1, Qt::Key_PageDown);
    EXPECT_GT(window->RTB1->verticalScrollBar()->value(), 0);
}

TEST_F(HelpViewer, KeepsLinesReadableHoweverWideItIs) {
    frmHelpTesl* window = open();
    const auto textWidth = [window] {
        const auto format = window->RTB1->document()->rootFrame()->frameFormat();
        return window->RTB1->viewport()->width() - format.leftMargin() - format.rightMargin();
    };
    window->resize(1600, 700);
    QTRY_COMPARE(window->width(), 1600);
    EXPECT_NEAR(textWidth(), 680, 2);
    window->resize(400, 700);
    QTRY_VERIFY(window->width() < 700);
    EXPECT_GT(textWidth(), 250);
    EXPECT_EQ(window->RTB1->horizontalScrollBar()->maximum(), 0);
}

TEST_F(HelpViewer, ComesUpOverTheMainWindow) {
    frmMain main;
    showAt(main, {60, 40, 500, 400});
    frmHelpTesl* window = open(101, &main);
    EXPECT_TRUE(window->frameGeometry().intersects(main.frameGeometry()));
    const QRect screen = window->screen()->availableGeometry();
    const QRect place = window->geometry();
    EXPECT_TRUE(screen.contains(place))
        << place.x() << "," << place.y() << " " << place.width() << "x" << place.height();
}

TEST_F(HelpViewer, ComesUpOverTheMiddleOfTheMainWindowEachTime) {
    frmMain main;
    frmHelpTesl* const window = open(101, &main);
    window->setMinimumSize(1, 1);
    QCoreApplication::processEvents();
    window->resize(240, 200);
    for (const QPoint corner : {QPoint(60, 90), QPoint(300, 150)}) {
        window->close();
        showAt(main, {corner, QSize(400, 300)});
        open(101, &main);
        const QPoint apart = window->geometry().center() - main.geometry().center();
        EXPECT_LE(apart.manhattanLength(), 2) << corner.x();
    }
}

TEST_F(HelpViewer, CanBeUsedWhileADialogOfTheMainWindowIsOpenAlsoIfItWasOpenedBefore) {
    for (const bool before : {false, true}) {
        QWidget main;
        auto* const button = new QPushButton(&main);
        int clicks = 0;
        QObject::connect(button, &QPushButton::clicked, &main, [&clicks] { ++clicks; });
        main.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&main));
        frmHelpTesl* window = before ? open(101, &main) : nullptr;
        QDialog dialog(&main);
        dialog.setWindowModality(Qt::WindowModal);
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        ASSERT_EQ(QApplication::activeModalWidget(), &dialog);
        if (!before) window = open(101, &dialog);
        EXPECT_EQ(window->parentWidget(), nullptr);
        QTest::keyClicks(window->txtFind, u"gap"_s);
        EXPECT_EQ(window->RTB1->textCursor().selectedText(), u"gap"_s);
        clickThroughTheDesktop(*button);
        EXPECT_EQ(clicks, 0) << "the dialog blocks its own window";
        clickThroughTheDesktop(*window->Command2);
        QTRY_VERIFY(!window->isVisible());
        EXPECT_TRUE(dialog.isVisible());
    }
}

TEST_F(HelpViewer, ListsAllDocumentsAndSelectsTheOneThatIsShown) {
    frmHelpTesl* window = open();
    window->resize(760, 500);
    QTRY_VERIFY(window->lstDocuments->isVisible());
    ASSERT_EQ(window->lstDocuments->count(), static_cast<int>(kHelpDocuments.size()));
    EXPECT_EQ(window->lstDocuments->item(2)->text(), u"Frequently asked questions"_s);
    EXPECT_EQ(window->lstDocuments->currentRow(), 0);
    writeDocument(113, kDocument);
    EXPECT_EQ(open(113)->lstDocuments->currentItem()->text(), u"Adjusting EM data"_s);
    EXPECT_TRUE(window->lstDocuments->isVisible());
}

TEST_F(HelpViewer, ShowsWhatIsChosenInTheListAndLeavesTheKeyboardThere) {
    writeDocument(102, "{\\rtf1 Second\\par}");
    writeDocument(103, "{\\rtf1 Third\\par}");
    frmHelpTesl* window = open();
    window->resize(760, 500);
    QListWidget* const list = window->lstDocuments;
    QTRY_VERIFY(list->isVisible());
    QTest::keyClick(window->RTB1, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), list);
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(window->RTB1->toPlainText(), u"Second"_s);
    EXPECT_EQ(QApplication::focusWidget(), list);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(2)).center());
    EXPECT_EQ(window->windowTitle(), u"Third - Help"_s);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), window->RTB1) << "where the arrows scroll";
    QTest::keyClick(window->RTB1, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), window->txtFind);
}

TEST_F(HelpViewer, GoesBackInItsListWhenADocumentIsMissing) {
    frmHelpTesl* window = open();
    boxes_.tellBeginning(u"Warning!  File resource error."_s);
    window->lstDocuments->setCurrentRow(1);
    EXPECT_EQ(window->lstDocuments->currentRow(), 0);
    EXPECT_TRUE(window->RTB1->toPlainText().startsWith(u"Finding rows"_s));
}

TEST_F(HelpViewer, GivesAllItsWidthToTheTextWhenItIsNarrow) {
    frmHelpTesl* window = open();
    window->resize(500, 500);
    QTRY_VERIFY(!window->lstDocuments->isVisible());
    window->resize(760, 500);
    QTRY_VERIFY(window->lstDocuments->isVisible());
    window->splDocuments->setSizes({0, 1});
    QTRY_VERIFY(window->lstDocuments->visibleRegion().isEmpty());
}

TEST_F(HelpViewer, ComesUpBesideTheDialogThatItExplains) {
    frmMain main;
    showAt(main, {60, 90, 500, 400});
    QDialog dialog(&main);
    for (const QRect place : {QRect(20, 80, 200, 300), QRect(560, 80, 200, 300)}) {
        showAt(dialog, place);
        frmHelpTesl* window = open(101, &dialog);
        EXPECT_FALSE(window->frameGeometry().intersects(dialog.frameGeometry())) << place.x();
        dialog.setGeometry(QRect(20, 80, 200, 300));
        open(101, &dialog);
        EXPECT_FALSE(window->frameGeometry().intersects(dialog.frameGeometry())) << "while it is open too";
        window->close();
    }
}

TEST_F(HelpViewer, HasItsUsualSizeAgainWhereThereIsRoom) {
    frmMain main;
    showAt(main, {60, 90, 500, 400});
    frmHelpTesl* window = open(101, &main);
    window->resize(700, 400);
    window->close();
    QDialog dialog(&main);
    showAt(dialog, {20, 80, 200, 300});
    EXPECT_LT(open(101, &dialog)->width(), 700);
    window->close();
    EXPECT_EQ(open(101, &main)->width(), 700);
    EXPECT_TRUE(window->frameGeometry().intersects(main.frameGeometry()));
}

}  // namespace tessel
