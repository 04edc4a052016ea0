// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"

#include "base/palette16.h"
#include "base/session.h"
#include "desktop/CaptionColour.h"
#include "desktop/FileNames.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QScreen>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

const QString kBanner = u"Orvane Kettle Soils Lab:  VARN Utility Software"_s;
constexpr int kBannerInterval = 50;  // milliseconds between two characters
constexpr int kMessageStays = 8000;  // milliseconds

QString nameOf(std::string_view item) {
    return QString::fromLatin1(item.data(), static_cast<qsizetype>(item.size()));
}

// What a survey is like is a text to a screen reader, whatever it scrolls in.
QAccessibleInterface* spokenSummary(const QString& className, QObject* object) {
    if (className != "QScrollArea"_L1 || object->objectName() != "summaryArea"_L1) return nullptr;
    return new QAccessibleWidget(qobject_cast<QWidget*>(object), QAccessible::StaticText);
}

// Large enough to read a survey, and never larger than the screen leaves room for.
QSize firstSize(const QScreen* screen) {
    const QSize room = screen->availableSize() * 0.92;
    return QSize(1100, 750).boundedTo(room);
}

}  // namespace

frmMain::frmMain(QWidget* parent) : QMainWindow(parent) {
    QAccessible::installFactory(spokenSummary);
    setupUi(this);
    setAcceptDrops(true);
    nameSubmenus();
    resize(firstSize(screen()));
    editorArea->hide();
    colourCaption(*Label20, kBlue);
    QPalette paper = chartArea->palette();
    paper.setColor(QPalette::Window, Qt::white);
    paper.setColor(QPalette::WindowText, QColor(0x50, 0x50, 0x50));
    chartArea->setPalette(paper);
    QFont larger = lblInvitation->font();
    larger.setPointSizeF(larger.pointSizeF() * 1.25);
    lblInvitation->setFont(larger);
    lblInvitation->setText(
        u"Import a sensor file to begin:\nFile, then “Import a Trimble/EM-38 Sensor file” "
        u"or “Inport a generic Sensor file”,\n"
        u"or for any other table “Import a table (choose its columns)”.\nA file can also be dropped here."_s);
    summaryArea->setAccessibleName(lblInvitation->text());
    summaryArea->installEventFilter(this);

    connect(mnuExit, &QAction::triggered, this, guarded(this, [this] { close(); }));
    connect(mnuClear, &QAction::triggered, this, guarded(this, [this] { hidePlots(); }));
    menusFollow(MenuEvent::kStartUp);
    mnuUndo->setShortcut(Qt::CTRL | Qt::Key_Z);
    mnuRedo->setShortcuts({Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y});
    messageEnds_.setSingleShot(true);
    connect(&messageEnds_, &QTimer::timeout, lblMessage, &QLabel::clear);

    Timer1.setObjectName(u"Timer1"_s);
    Timer1.setInterval(kBannerInterval);
    connect(&Timer1, &QTimer::timeout, this, guarded(this, [this] { Timer1_Timer(); }));
    Timer1.start();
}

// A submenu is enabled through its action, which Designer leaves without a name.
void frmMain::nameSubmenus() {
    for (QMenu* menu : findChildren<QMenu*>())
        menu->menuAction()->setObjectName(menu->objectName());
}

void frmMain::Timer1_Timer() {
    Label20->setText(kBanner.left(Label20->text().size() + 1));
    if (Label20->text().size() == kBanner.size()) Timer1.stop();
}

void frmMain::addChart(QWidget* chart) {
    chart->hide();
    charts_ << chart;
    chartLayout->addWidget(chart, 1);
    chart->installEventFilter(this);
}

void frmMain::addEditor(QWidget* frame) {
    frame->hide();
    editors_ << frame;
    editorLayout->addWidget(frame);
    frame->installEventFilter(this);
}

void frmMain::hidePlots() {
    for (QWidget* chart : charts_)
        chart->hide();
    for (QWidget* editor : editors_)
        editor->hide();
    Q_EMIT plotsHidden();
}

void frmMain::describeWith(std::function<SurveyDescription()> description) {
    description_ = std::move(description);
}

void frmMain::descriptionChanged() {
    descriptionIsOld_ = true;
    if (summaryArea->isVisible()) updateDescription();
}

// Guarded: a survey that cannot be described has changed all the same, and what follows from that goes on.
void frmMain::updateDescription() {
    if (std::exchange(descriptionIsOld_, false)) runGuarded(this, [this] { describeSurvey(); });
}

void frmMain::describeSurvey() {
    const SurveyDescription description = description_();
    lblInvitation->setText(QString::fromStdString(description.headline));
    surveySummary->setLines(description.lines);
    summaryArea->setAccessibleName(lblInvitation->text() + u'\n' + surveySummary->text());
}

void frmMain::showInvitationWhileEmpty() {
    const auto shown = [](const QWidget* widget) { return !widget->isHidden(); };
    mnuSavePicture->setEnabled(std::any_of(charts_.cbegin(), charts_.cend(), shown));
    summaryArea->setVisible(std::none_of(charts_.cbegin(), charts_.cend(), shown));
    editorArea->setVisible(std::any_of(editors_.cbegin(), editors_.cend(), shown));
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    if (watched == summaryArea) {
        if (type == QEvent::Show) updateDescription();
    } else if (type == QEvent::ShowToParent || type == QEvent::HideToParent) {
        showInvitationWhileEmpty();
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::menusFollow(MenuEvent event) {
    for (const MenuChange& change : menuChanges(event))
        for (const std::string_view name : change.items)
            menuItem(nameOf(name))->setEnabled(change.enable);
}

MenuState frmMain::menuState() const {
    MenuState state = 0, bit = 1;
    for (const std::string_view name : followingItems()) {
        if (menuItem(nameOf(name))->isEnabled()) state |= bit;
        bit <<= 1;
    }
    return state;
}

void frmMain::restoreMenus(MenuState state) {
    for (const std::string_view name : followingItems()) {
        menuItem(nameOf(name))->setEnabled((state & 1) != 0);
        state >>= 1;
    }
}

void frmMain::showMessage(const QString& message) {
    lblMessage->setText(message);
    messageEnds_.start(kMessageStays);
}

QAction* frmMain::menuItem(const QString& name) const {
    if (const QMenu* menu = findChild<QMenu*>(name)) return menu->menuAction();
    QAction* const action = findChild<QAction*>(name);
    Q_ASSERT(action != nullptr);
    return action;
}

bool frmMain::mayLeave() {
    if (theSession().DataSaved || asking_) return !asking_;
    const QScopedValueRollback asks(asking_, true);
    return ask(this,
               u"Attention: you have not exported an output VARN data file yet!\n"
               u"Are you sure that you wish to exit the program?"_s);
}

// Not beneath a window that works on the survey.
void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    if (QApplication::activeModalWidget() == nullptr && !droppedFile(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void frmMain::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    Q_EMIT fileDropped(droppedFile(*event->mimeData()));
}

void frmMain::closeEvent(QCloseEvent* event) {
    const bool mayClose = mayLeave();
    event->setAccepted(mayClose);
    if (mayClose) Q_EMIT left();
    // Windows without a parent (help, statistics) would keep the program alive.
    if (mayClose) QApplication::quit();
}

}  // namespace tessel
