#pragma once

#include <QFileDialog>

#include <string>

/// Qt's file dialog, which neither lists nor takes names that are no Unicode; this one takes them typed, as
/// legible() shows them, and files' addresses too. (The desktop's own dialogs, where Qt has them, are
/// theirs.)
class AnyNameDialog : public QFileDialog {
  public:
    using QFileDialog::QFileDialog;

    /// The file that was chosen or typed, as fromPath() has it.
    QString chosen() const { return typed_.isEmpty() ? selectedFiles().value(0) : typed_; }

  protected:
    void showEvent(QShowEvent* event) override;
    void accept() override;

  private:
    std::string typedName() const;
    bool takes(const std::string& path) const;
    bool mayReplace(const std::string& path);
    void enableAccept();

    QString typed_;
};
