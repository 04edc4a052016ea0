// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFileDialog>

#include <string>

namespace tessel {

/// Qt's file dialog, which neither lists nor takes names that are no Unicode; this one takes them typed, as
/// legible() shows them, and files' addresses too. (The desktop's own dialogs, where Qt has them, are
/// theirs.) Where a file is to be read it refuses a device, a pipe or a file of the system's own and stays,
/// which the desktop's own cannot, and it opens none of the files that it lists.
class AnyNameDialog : public QFileDialog {
  public:
    AnyNameDialog(QWidget* parent, const QString& caption);

    /// Puts the path where the name is typed, selected, so that typing replaces it. One that Qt's dialog
    /// cannot hold is not proposed.
    void propose(const QString& path);

    /// The file that was chosen or typed, as fromPath() has it.
    QString chosen() const { return typed_.isEmpty() ? selectedFiles().value(0) : typed_; }

  protected:
    void showEvent(QShowEvent* event) override;
    void accept() override;

  private:
    std::string typedName() const;
    bool refuses(const std::string& path);
    bool takes(const std::string& path) const;
    bool mayReplace(const std::string& path);
    void enableAccept();

    QString typed_;
};

}  // namespace tessel
