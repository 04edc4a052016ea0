// SPDX-License-Identifier: GPL-3.0-or-later
// What holds for every window: names, captions, keys, help, room for the text.
#include "analysis/frmAdjustData.h"
#include "analysis/frmHistForm.h"
#include "analysis/frmSigCorrStruct.h"
#include "analysis/frmSuspects.h"
#include "app/HelpOpener.h"
#include "app/applied_adjustments.h"
#include "app/frmAbout.h"
#include "app/frmHelpTesl.h"
#include "app/frmMain.h"
#include "base/session.h"
#include "drawing/PictureBox.h"
#include "export/frmOutput.h"
#include "export/frmSaveTable.h"
#include "geodesy/frmCoordinates.h"
#include "import/frmDataControl.h"
#include "import/frmGeneric.h"
#include "import/frmIniDisplay.h"
#include "import/frmTable.h"
#include "journal/frmHistory.h"
#include "plots/Chart2D.h"
#include "plots/frmClip.h"
#include "plots/frmPicture.h"
#include "program/Program.h"
#include "rows/frmDataEdit.h"
#include "rows/frmStat.h"
#include "rows/frmTurns.h"
#include "support/ExpectedBoxes.h"
#include "support/made_survey.h"
#include "support/survey_under_test.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

struct Window {
    const char* name;
    std::function<QWidget*(frmMain&)> open;
    int help;              // the number of its help document
    const char* helpItem;  // what opens it, beside F1
};

frmIniDisplay* openPreview(frmMain& main) {
    TrimbleOptions options;
    options.path = TESSEL_SOURCE_DIR "/samples/serpentine_two_readings.dat";
    return new frmIniDisplay(&main, options);
}

KnownTables& knownTables() {
    static KnownTables known;
    return known;
}

const Window kWindows[] = {
    {"frmMain", [](frmMain& main) { return &main; }, 101, "mnuHmain1"},
    {"frmMain_rowPlots", [](frmMain& main) { return main.mnuX->trigger(), &main; }, 114, "cmdHelp"},
    {"frmMain_grid", [](frmMain& main) { return main.mnuGrid->trigger(), &main; }, 111, "mnuPlotHelp"},
    {"frmAbout", [](frmMain& main) { return new frmAbout(&main); }, 101, ""},
    {"frmDataControl", [](frmMain& main) { return new frmDataControl(&main); }, 104, "cmdHelp"},
    {"frmIniDisplay", [](frmMain& main) { return openPreview(main); }, 105, "cmdHelp"},
    {"frmGeneric", [](frmMain& main) { return new frmGeneric(&main); }, 106, "cmdHelp"},
    {"frmOutput", [](frmMain& main) { return new frmOutput(&main); }, 107, "cmdHelp"},
    {"frmSaveTable", [](frmMain& main) { return new frmSaveTable(&main); }, 120, "cmdHelp"},
    {"frmCoordinates", [](frmMain& main) { return new frmCoordinates(&main); }, 121, "cmdHelp"},
    {"frmTable", [](frmMain& main) { return new frmTable(&main, knownTables()); }, 120, "cmdHelp"},
    {"frmClip", [](frmMain& main) { return new frmClip(&main); }, 108, "mnuGDRH1"},
    {"frmDataEdit", [](frmMain& main) { return new frmDataEdit(&main); }, 112, "cmdHelp"},
    {"frmTurns", [](frmMain& main) { return new frmTurns(&main); }, 118, "cmdHelp"},
    {"frmSuspects", [](frmMain& main) { return new frmSuspects(&main); }, 119, "cmdHelp"},
    {"frmAdjustData", [](frmMain& main) { return new frmAdjustData(&main); }, 113, "cmdHelp"},
    {"frmHistory", [](frmMain& main) { return new frmHistory(&main); }, 117, "cmdHelp"},
    {"frmStat", [](frmMain& main) { return new frmStat(&main); }, 102, ""},
    {"frmPicture", [](frmMain& main) { return new frmPicture(&main, PlotPicture({})); }, 111, ""},
    {"frmSigCorrStruct", [](frmMain& main) { return new frmSigCorrStruct(&main); }, 115, "mnuSDChelp"},
    {"frmHistForm", [](frmMain& main) { return new frmHistForm(&main); }, 116, "mnuHisthelp"},
};

void PrintTo(const Window& window, std::ostream* out) {
    *out << window.name;
}

frmHelpTesl* helpViewer() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* viewer = qobject_cast<frmHelpTesl*>(widget); viewer && viewer->isVisible()) return viewer;
    return nullptr;
}

QString visibleHelp() {
    return helpViewer() ? helpViewer()->windowTitle() : QString();
}

void closeHelp() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* viewer = qobject_cast<frmHelpTesl*>(widget)) viewer->close();
}

QString titleOf(int document) {
    const std::string source =
        readFile(TESSEL_SOURCE_DIR "/docs/help/hdoc" + std::to_string(document) + ".md");
    return QString::fromStdString(source.substr(2, source.find('\n') - 2));
}

// Everything that a user works with; not what Qt puts inside (scroll bars, the list of a combo box).
QList<QWidget*> controlsOf(const QWidget& window) {
    QList<QWidget*> controls;
    for (QWidget* widget : window.findChildren<QWidget*>())
        if (widget->window() == &window && !widget->objectName().isEmpty() &&
            !widget->objectName().startsWith("qt_"_L1) && widget->focusPolicy() & Qt::TabFocus &&
            !widget->inherits("QMenuBar"))
            controls << widget;
    return controls;
}

void addSpoken(QAccessibleInterface* one, QList<QAccessibleInterface*>& all) {
    all << one;
    for (int i = 0; i < one->childCount(); ++i)
        if (QAccessibleInterface* const child = one->child(i)) addSpoken(child, all);
}

// What a screen reader comes upon in a window that can have the focus or be pressed, whether it is visible by
// now or not. Cells of tables and lists are data; the list of a combo box is Qt's own.
QList<QAccessibleInterface*> spokenControls(QWidget& window) {
    QList<QAccessibleInterface*> all;
    addSpoken(QAccessible::queryAccessibleInterface(&window), all);
    all.removeIf([](const QAccessibleInterface* one) {
        const auto role = one->role();
        const bool pressed = role == QAccessible::Button || role == QAccessible::CheckBox ||
                             role == QAccessible::RadioButton || role == QAccessible::MenuItem;
        return one->object() == nullptr || one->object()->inherits("QComboBoxListView") ||
               one->object()->objectName().startsWith("qt_"_L1) || (!pressed && !one->state().focusable);
    });
    return all;
}

QChar mnemonicIn(const QString& text) {
    static const QRegularExpression kMark(u"&([^& ])"_s);
    const QRegularExpressionMatch match = kMark.match(text);
    return match.hasMatch() ? match.captured(1).at(0).toUpper() : QChar();
}

// The texts with mnemonics that work side by side: Alt and the letter.
QStringList textsWithKeys(const QWidget& window) {
    QStringList texts;
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
        if (button->isVisible()) texts << button->text();
    for (const QLabel* label : window.findChildren<QLabel*>())
        if (label->isVisible() && label->buddy()) texts << label->text();
    for (const QGroupBox* box : window.findChildren<QGroupBox*>())
        if (box->isVisible()) texts << box->title();
    if (const auto* bar = window.findChild<QMenuBar*>())
        for (const QAction* menu : bar->actions())
            texts << menu->text();
    return texts;
}

void expectUniqueKeys(const QStringList& texts, const std::string& where) {
    QHash<QChar, QString> taken;
    for (const QString& text : texts) {
        const QChar key = mnemonicIn(text);
        if (key.isNull()) continue;
        EXPECT_FALSE(taken.contains(key)) << where << ": Alt+" << QString(key).toStdString() << " is "
                                          << taken[key].toStdString() << " and " << text.toStdString();
        taken[key] = text;
    }
}

class EveryWindow : public testing::TestWithParam<Window> {
  protected:
    EveryWindow() {
        theSession().AppDir = TESSEL_SOURCE_DIR;
        theSession().DataDir = folder_.path();
        start();
    }
    ~EveryWindow() override {
        closeHelp();
        main.reset();
        QApplication::setFont(font_);
    }

    void start() {
        main.reset();
        main = createProgram();
        surveyUnderTest() = madeSurvey({{100, 10, 20, 40, 1},
                                        {110, 11, 30, 45, 1},
                                        {120, 10, 25, 50, 1},
                                        {140, 60, 33, 66, 2},
                                        {150, 61, 31, 62, 2},
                                        {160, 60, 12, 60, 2}});
        main->menusFollow(MenuEvent::kSitesImported);
        main->move(0, 0);
    }

    // As the program shows it; the main window stands beneath nothing that is clicked.
    void open() {
        main->show();
        window = GetParam().open(*main);
        if (window != main.get()) {
            main->hide();
            window->show();
        }
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    }

    const QFont font_ = QApplication::font();
    const TemporaryFolder folder_;
    ExpectedBoxes boxes;
    std::unique_ptr<frmMain> main;
    QWidget* window = nullptr;
};

void expectSpoken(QWidget& window) {
    for (QAccessibleInterface* const control : spokenControls(window)) {
        const std::string who = control->object()->objectName().toStdString() + ' ' +
                                control->object()->metaObject()->className();
        EXPECT_FALSE(control->text(QAccessible::Name).trimmed().isEmpty()) << who;
        EXPECT_NE(control->role(), QAccessible::NoRole) << who;
        EXPECT_NE(control->role(), QAccessible::Client) << who;
        if (const auto* const widget = qobject_cast<const QWidget*>(control->object())) {
            EXPECT_EQ(control->state().disabled, !widget->isEnabled()) << who;
        }
        if (const auto* const button = qobject_cast<const QAbstractButton*>(control->object())) {
            EXPECT_EQ(control->state().checkable, button->isCheckable()) << who;
            EXPECT_EQ(control->state().checked, button->isChecked()) << who;
        }
    }
}

TEST_P(EveryWindow, TellsAScreenReaderNameRoleAndStateAndItsHelpToo) {
    open();
    expectSpoken(*window);
    QTest::keyClick(window, Qt::Key_F1);
    ASSERT_NE(helpViewer(), nullptr);
    expectSpoken(*helpViewer());
}

// A name that stands in the place of the text would hide the value.
TEST_P(EveryWindow, TellsAScreenReaderEveryNumberThatALabelShows) {
    open();
    for (QLabel* const label : window->findChildren<QLabel*>()) {
        if (label->objectName().isEmpty() || label->objectName() == u"Label20") continue;
        label->setText(u"31.25"_s);
        const QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(label);
        EXPECT_TRUE(spoken->text(QAccessible::Name).contains(u"31.25"_s))
            << label->objectName().toStdString();
    }
}

// Of a group of option buttons Tab reaches the chosen one; the arrow keys lead to the others.
TEST_P(EveryWindow, ReachesEveryControlWithTab) {
    open();
    QSet<const QWidget*> reached;
    for (qsizetype i = 0; i <= controlsOf(*window).size() + 5; ++i) {
        if (QWidget* focus = QApplication::focusWidget()) {
            reached << focus;
            QTest::keyClick(focus, Qt::Key_Tab);
        } else {
            QTest::keyClick(window, Qt::Key_Tab);
        }
    }
    for (const QWidget* control : controlsOf(*window)) {
        if (!control->isVisible() || !control->isEnabled()) continue;
        const auto* option = qobject_cast<const QRadioButton*>(control);
        if (option && !option->isChecked()) continue;
        EXPECT_TRUE(reached.contains(control)) << control->objectName().toStdString();
    }
}

TEST_P(EveryWindow, GivesAKeyWithAltToOneThingOnly) {
    open();
    expectUniqueKeys(textsWithKeys(*window), GetParam().name);
    for (const QMenu* menu : window->findChildren<QMenu*>()) {
        QStringList texts;
        for (const QAction* item : menu->actions())
            texts << item->text();
        expectUniqueKeys(texts, menu->title().toStdString());
    }
}

TEST_P(EveryWindow, HasOneDefaultButtonIfItIsADialog) {
    open();
    if (qobject_cast<QDialog*>(window) == nullptr) return;
    int defaults = 0;
    for (const QPushButton* button : window->findChildren<QPushButton*>())
        defaults += button->isDefault();
    EXPECT_EQ(defaults, 1);
}

TEST_P(EveryWindow, ClosesWithEscapeUnlessItIsTheMainWindow) {
    open();
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(window->isVisible(), window == main.get());
}

TEST_P(EveryWindow, OpensItsHelpWithF1) {
    for (const bool fromItsControl : {true, false}) {
        open();
        QWidget* const focus = fromItsControl ? QApplication::focusWidget() : window;
        QTest::keyClick(focus ? focus : window, Qt::Key_F1);
        EXPECT_EQ(visibleHelp(), titleOf(GetParam().help) + u" - Help"_s);
        closeHelp();
        start();
    }
}

TEST_P(EveryWindow, OpensItsHelpWithItsButtonOrItsMenu) {
    if (*GetParam().helpItem == '\0') return;
    open();
    const QString name = QString::fromLatin1(GetParam().helpItem);
    if (auto* const button = window->findChild<QPushButton*>(name))
        QTest::mouseClick(button, Qt::LeftButton);
    else
        window->findChild<QAction*>(name)->trigger();
    EXPECT_EQ(visibleHelp(), titleOf(GetParam().help) + u" - Help"_s);
}

// The items of a menu, or the menus of a bar, by their names.
QString itemsOf(const QWidget& menu) {
    QStringList items;
    for (const QAction* item : menu.actions())
        items << (item->isSeparator() ? u"-"_s
                  : item->menu()      ? item->menu()->objectName()
                                      : item->objectName());
    return items.join(u' ');
}

// What a window says as it opens, a line for each text and the name of what says it; menus with their items.
QString textsOf(const QWidget& window) {
    QStringList lines{u"title: "_s + window.windowTitle()};
    const auto add = [&lines](const QObject& object, const QString& text) {
        const QString name = object.objectName();
        if (name.isEmpty() || name.startsWith("qt_"_L1) || name == u"Label20" || text.isEmpty()) return;
        lines << name + u": "_s + QString(text).remove(u'&').replace(u'\n', u'|');
    };
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (const auto* menu = qobject_cast<const QMenu*>(widget))
            add(*menu, menu->title() + u": "_s + itemsOf(*menu));
        if (qobject_cast<const QMenuBar*>(widget)) lines << u"menus: "_s + itemsOf(*widget);
        if (widget->window() != &window) continue;
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) add(*button, button->text());
        if (const auto* label = qobject_cast<const QLabel*>(widget)) add(*label, label->text());
        if (const auto* box = qobject_cast<const QLineEdit*>(widget)) add(*box, box->text());
        if (const auto* frame = qobject_cast<const QGroupBox*>(widget)) add(*frame, frame->title());
        if (!widget->toolTip().isEmpty()) add(*widget, u"(hint) "_s + widget->toolTip());
    }
    for (const QAction* action : window.findChildren<QAction*>())
        if (!action->menu()) add(*action, action->text());
    lines.sort();
    return lines.join(u'\n') + u'\n';
}

// Prescribed letter by letter: tests/program/texts has a file for each window.
TEST_P(EveryWindow, ShowsItsTexts) {
    open();
    const std::string file =
        TESSEL_SOURCE_DIR "/tests/program/texts/" + std::string(GetParam().name) + ".txt";
    EXPECT_EQ(textsOf(*window).toStdString(), readFile(file));
}

// Texts that have less room than they ask for.
QStringList clippedTexts(const QWidget& window) {
    // The banner grows letter by letter, and its room a turn of the event loop later.
    QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QStringList clipped;
    const auto check = [&clipped](const QWidget& widget, const QSize& needed) {
        const bool inside = widget.isVisible() && !widget.objectName().startsWith("qt_"_L1);
        if (inside && (widget.width() < needed.width() || widget.height() < needed.height()))
            clipped << widget.objectName();
    };
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
        check(*button, button->minimumSizeHint());
    for (const QLabel* label : window.findChildren<QLabel*>())
        check(*label,
              label->wordWrap() ? QSize(1, label->heightForWidth(label->width())) : label->minimumSizeHint());
    return clipped;
}

TEST_P(EveryWindow, FitsASmallScreen) {
    open();
    EXPECT_LE(window->width(), 1366);
    EXPECT_LE(window->height(), 768);
    EXPECT_EQ(clippedTexts(*window).join(u' ').toStdString(), "");
}

TEST_P(EveryWindow, HasRoomForItsTextsInLargeLetters) {
    QFont large = font_;
    large.setPointSize(14);
    QApplication::setFont(large);
    start();
    open();
    EXPECT_EQ(clippedTexts(*window).join(u' ').toStdString(), "");
}

INSTANTIATE_TEST_SUITE_P(Of, EveryWindow, testing::ValuesIn(kWindows),
                         [](const auto& one) { return one.param.name; });

}  // namespace

}  // namespace tessel
