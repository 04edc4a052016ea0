// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/temporary_folder.h"

namespace tessel {

class frmMain;

/// A hand that knows nothing of the program: it sends raw window-system events (keys, mnemonics, clicks,
/// drags, the wheel, sizes, drops, focus, the window manager's close) to whatever windows there are, one
/// after the other without waiting for anything, on odd surveys. Boxes and file dialogs are the real ones.
/// After each act the survey is looked at. What it writes lies in a folder of its own; no program is started
/// and nothing is printed on a printer.
class EventMonkey : public QObject {
  public:
    explicit EventMonkey(std::uint64_t seed);
    ~EventMonkey() override;

    /// Sends so many events; the program begins anew every few thousand, and when it has been left. Requires
    /// an application. Gives what does not hold in the survey any more and at which event; empty when all is
    /// well.
    std::string run(long events);

  private:
    using Act = void (EventMonkey::*)();
    struct Choice {
        int weight;
        const char* name;
        Act make;
    };
    static const std::vector<Choice>& choices();

    void runProgram();
    void act();
    void keepFileDialogsInTheFolder();
    void note(const char* name, const QString& what);

    int below(int limit);
    bool oneIn(int chances) { return below(chances) == 0; }
    QWindow* chooseWindow();
    QWidget* widgetOf(QWindow* window) const;
    QWidget* chooseControl();
    QPoint choosePlace();
    QPoint global(QPoint place) const { return window_->mapToGlobal(place); }

    void mnemonic();
    void key();
    void shortcut();
    void type();
    void click();
    void pressOrRelease();
    void contextMenu();
    void drag();
    void wheel();
    void resize();
    void drop();
    void close();
    void focus();
    void minimise();
    void leave();

    void sendKey(int key, Qt::KeyboardModifiers modifiers, const QString& text = {});
    void sendMouse(QEvent::Type type, Qt::MouseButton button, QPoint place);

    std::uint64_t seed_;
    std::mt19937_64 random_;
    TemporaryFolder folder_;
    QTimer timer_;
    QMimeData dropped_;
    std::unique_ptr<frmMain> main_;
    QPointer<QWindow> window_;  ///< of the act under way
    Qt::MouseButtons buttons_;
    long wanted_ = 0, sent_ = 0, end_ = 0;  ///< events: in all, so far, at which the program begins anew
    std::string broken_;
};

}  // namespace tessel
