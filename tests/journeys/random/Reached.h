// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace tessel {

/// Takes down which menu items, buttons and boxes of the program's windows are there and which of them have
/// been used while the object lives, and what else is worth knowing that it has happened.
class Reached : public QObject {
  public:
    /// But for controls of these names.
    explicit Reached(const std::set<std::string>& others);

    /// Something that has happened.
    void note(const std::string& what) { used_.insert(what); }
    /// Something that has to happen.
    void want(const std::string& what) { wanted_.insert(what); }

    /// What has not been used, or has not happened.
    std::vector<std::string> missing() const;

  protected:
    /// Watches every window that is shown.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void watch(QWidget& window);
    template <typename Control, typename Signal>
    void watchAll(QWidget& window, Signal signal);

    const std::set<std::string> others_;
    std::set<std::string> wanted_, used_;
};

}  // namespace tessel
