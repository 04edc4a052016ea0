#pragma once

#include "ui_frmHelpTesl.h"

#include <QByteArray>
#include <QWidget>

/// The help viewer: shows a rich text document, finds words in it, and hands it to the text editor. It is a
/// window of its own, so that it can be read and used while a dialog of the main window is open, and it does
/// not keep the program alive.
class frmHelpTesl : public QWidget, public Ui::frmHelpTesl {
    Q_OBJECT

  public:
    explicit frmHelpTesl(QWidget* parent = nullptr);

    /// Shows the document from its beginning. Its first line is the window's title, or `name` when that is no
    /// title. A document that is too large to show can still be handed to the text editor.
    void showDocument(const QByteArray& rtf, const QString& name);

  protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Form_Load();
    void Command1_Click();
    void txtFind_Change();
    void findNext();
    void find(int from);
    void setPageMargins();

    QByteArray document_;  // as it was read, byte for byte
};
