// SPDX-License-Identifier: GPL-3.0-or-later
#include "journeys/monkey/EventMonkey.h"

#include "app/frmMain.h"
#include "base/session.h"
#include "desktop/Printing.h"
#include "desktop/TextEditor.h"
#include "journeys/monkey/LastEvents.h"
#include "journeys/monkey/odd_surveys.h"
#include "program/Program.h"
#include "support/UserDriver.h"
#include "support/survey_invariants.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

constexpr long kEventsOfAProgram = 2500;

}  // namespace

EventMonkey::EventMonkey(std::uint64_t seed) : seed_(seed), random_(seed) {
    LastEvents::watch(seed);
    setProgramStarter([](const EditorCommand&) { return true; });
    setDesktopOpener([](const QString&) { return true; });
    setDefaultPrinterName([] { return QString(); });
    std::filesystem::current_path(folder_.path());
    for (int number = 0; number < kOddSurveys; ++number)
        writeFile(folder_ / ("odd" + std::to_string(number) + ".txt"), delimitedFile(oddSurvey(number)));
    std::filesystem::copy(TESSEL_SOURCE_DIR "/helpdocs", folder_ / "helpdocs");
    timer_.setInterval(0);
    connect(&timer_, &QTimer::timeout, this, &EventMonkey::act);
}

EventMonkey::~EventMonkey() {
    setProgramStarter({});
    setDesktopOpener({});
    setDefaultPrinterName({});
    std::filesystem::current_path("/");
}

std::string EventMonkey::run(long events) {
    wanted_ = sent_ + events;
    while (sent_ < wanted_ && broken_.empty())
        runProgram();
    return broken_;
}

void EventMonkey::runProgram() {
    theSession() = Session{};
    theSession().AppDir = theSession().DataDir = folder_.path();
    theSession().TextEditor = "/bin/true ";
    startAfresh();
    surveyUnderTest() = oddSurvey(below(kOddSurveys));
    main_ = createProgram();
    main_->menusFollow(MenuEvent::kSitesImported);
    main_->show();
    end_ = std::min(wanted_, sent_ + kEventsOfAProgram);
    timer_.start();
    QApplication::exec();
    timer_.stop();
    for (QWidget* window : QApplication::topLevelWidgets())
        window->hide();
    letWindowsGo();
    main_.reset();
    letWindowsGo();
}

void EventMonkey::act() {
    const std::string broken = brokenInvariant(theSurvey());
    if (!broken.empty()) {
        LastEvents::write();
        broken_ = "seed " + std::to_string(seed_) + ", before event " + std::to_string(sent_) + ": " + broken;
    }
    if (!broken.empty() || sent_ >= end_) return QApplication::exit();
    keepFileDialogsInTheFolder();
    window_ = chooseWindow();
    if (!window_) return QApplication::exit();  // the last one has been closed
    int chosen = below(1000);
    for (const Choice& choice : choices()) {
        chosen -= choice.weight;
        if (chosen >= 0) continue;
        note(choice.name, {});
        return (this->*choice.make)();
    }
}

// They could rename, delete and overwrite whatever the user may.
void EventMonkey::keepFileDialogsInTheFolder() {
    const QString folder = QString::fromStdString(folder_.path());
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* const dialog = qobject_cast<QFileDialog*>(window);
        if (dialog == nullptr || !dialog->isVisible()) continue;
        if (!dialog->testOption(QFileDialog::ReadOnly)) dialog->setOption(QFileDialog::ReadOnly);
        if (dialog->directory().absolutePath() != folder) dialog->setDirectory(folder);
    }
}

void EventMonkey::note(const char* name, const QString& what) {
    const QWidget* const widget = widgetOf(window_);
    const QString place = widget == nullptr ? u"?"_s : widget->objectName() + u' ' + widget->windowTitle();
    LastEvents::note(sent_,
                     (QString::fromLatin1(name) + u' ' + what + u" in "_s + place).toUtf8().constData());
}

int EventMonkey::below(int limit) {
    return static_cast<int>(random_() % static_cast<std::uint64_t>(std::max(1, limit)));
}

// Mostly the one in front; now and then one that has no business to be acted upon.
QWindow* EventMonkey::chooseWindow() {
    QWidget* const menu = QApplication::activePopupWidget();
    if (menu != nullptr && !oneIn(4)) return menu->windowHandle();
    if (QWindow* const front = QGuiApplication::focusWindow(); front != nullptr && !oneIn(8)) return front;
    QList<QWindow*> shown;
    for (QWindow* window : QGuiApplication::topLevelWindows())
        if (window->isVisible()) shown << window;
    return shown.isEmpty() ? nullptr : shown[below(static_cast<int>(shown.size()))];
}

QWidget* EventMonkey::widgetOf(QWindow* window) const {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (window != nullptr && widget->windowHandle() == window) return widget;
    return nullptr;
}

QWidget* EventMonkey::chooseControl() {
    QWidget* const widget = widgetOf(window_);
    if (widget == nullptr) return nullptr;
    QList<QWidget*> shown;
    for (QWidget* child : widget->findChildren<QWidget*>())
        if (child->isVisible() && child->window() == widget) shown << child;
    return shown.isEmpty() ? widget : shown[below(static_cast<int>(shown.size()))];
}

QPoint EventMonkey::choosePlace() {
    const QSize size = window_->size().expandedTo({1, 1});
    const QWidget* const control = oneIn(3) ? nullptr : chooseControl();
    if (control == nullptr) return {below(size.width()), below(size.height())};
    if (oneIn(2)) return control->mapTo(control->window(), control->rect().center());
    return control->mapTo(control->window(),
                          QPoint(below(control->width() + 1), below(control->height() + 1)));
}

}  // namespace tessel
