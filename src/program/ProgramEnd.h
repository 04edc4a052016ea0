// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <cstdint>
#include <functional>
#include <optional>

namespace tessel {

// The ends of the program that do not come from its main window: the desktop's session ends, or the system
// asks with a signal.

/// The part of a session manager that is used: Qt's own cannot be made for a test.
struct SessionManager {
    std::function<bool()> allowsInteraction;
    std::function<void()> cancel;
    std::function<void()> release;
};

/// Watches for the end of the session and for SIGTERM, SIGINT and SIGHUP (unless they were ignored before, as
/// under nohup). A signal ends the program between two events, with status 0 and without a question, since
/// nobody may be there to answer; boxes that are open end as if cancelled. One a process.
class ProgramEnd : public QObject {
  public:
    /// `mayLeave` asks the user, and says what was answered; `left` is called when the program ends because
    /// the session does, the user has been asked and the survey is still the same.
    ProgramEnd(std::function<bool()> mayLeave, std::function<void()> left);
    ~ProgramEnd() override;

    /// The session is about to end. Asks once where that is allowed, and stops the end when the answer is No;
    /// what then asks the program to quit ends it without a further question.
    void commitSession(const SessionManager& manager);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void watchSignals();
    void endBySignal();
    void leaveIfAnswered() const;

    std::function<bool()> mayLeave_;
    std::function<void()> left_;
    bool sessionEnds_ = false;
    std::optional<std::uint64_t> answeredAt_;  // of the survey that was asked about
};

}  // namespace tessel
