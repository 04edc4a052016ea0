// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/ProgramEnd.h"

#include "base/session.h"

#include <QApplication>
#include <QEvent>
#include <QSessionManager>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace tessel {

namespace {

constexpr std::array kSignals = {SIGTERM, SIGINT, SIGHUP};

// A handler may do next to nothing: it writes a byte here, which the event loop reads.
std::array<int, 2> bell = {-1, -1};

extern "C" void ringBell(int) {
    const int before = errno;
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(bell[1], &byte, 1);
    errno = before;
}

void handle(int signal) {
    struct sigaction action {};
    ::sigaction(signal, nullptr, &action);
    if (action.sa_handler == SIG_IGN) return;
    action = {};
    action.sa_handler = ringBell;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

}  // namespace

ProgramEnd::ProgramEnd(std::function<bool()> mayLeave, std::function<void()> left)
    : mayLeave_(std::move(mayLeave)), left_(std::move(left)) {
    watchSignals();
    qApp->installEventFilter(this);
    const auto commit = [this](QSessionManager& manager) {
        commitSession({[&] { return manager.allowsInteraction(); }, [&] { manager.cancel(); },
                       [&] { manager.release(); }});
    };
    connect(qApp, &QGuiApplication::commitDataRequest, this, commit, Qt::DirectConnection);
}

ProgramEnd::~ProgramEnd() {
    if (bell[0] < 0) return;
    for (const int signal : kSignals)
        std::signal(signal, SIG_DFL);
    for (int& end : bell)
        ::close(std::exchange(end, -1));
}

void ProgramEnd::watchSignals() {
    if (::pipe2(bell.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    auto* const notifier = new QSocketNotifier(bell[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &ProgramEnd::endBySignal);
    for (const int signal : kSignals)
        handle(signal);
}

// All event loops end, those of boxes too, and none begins any more: whatever waits for an answer gets none.
void ProgramEnd::endBySignal() {
    leaveIfAnswered();
    QCoreApplication::exit(0);
}

void ProgramEnd::leaveIfAnswered() const {
    if (answeredAt_ == surveyChanges()) left_();
}

void ProgramEnd::commitSession(const SessionManager& manager) {
    sessionEnds_ = true;
    answeredAt_.reset();
    if (!manager.allowsInteraction()) return;
    sessionEnds_ = mayLeave_();
    if (sessionEnds_) answeredAt_ = surveyChanges();
    if (!sessionEnds_) manager.cancel();
    manager.release();
}

bool ProgramEnd::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Quit || watched != qApp || !sessionEnds_) return false;
    leaveIfAnswered();
    QCoreApplication::exit(0);
    return true;
}

}  // namespace tessel
