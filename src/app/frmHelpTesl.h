// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui_frmHelpTesl.h"

#include <QByteArray>
#include <QPointer>
#include <QWidget>

namespace tessel {

/// The help viewer: lists the help documents, shows one, finds words in it, and hands it to the text editor.
/// It is a window of its own, so that it can be read and used while a dialog of the main window is open, and
/// it does not keep the program alive.
class frmHelpTesl : public QWidget, public Ui::frmHelpTesl {
    Q_OBJECT

  public:
    explicit frmHelpTesl(QWidget* parent = nullptr);

    /// Shows the document from its beginning. Its first line is the window's title, or `name` when that is no
    /// title. A document that is too large to show can still be handed to the text editor.
    ///
    /// Its line in the list, by `number`, is the selected one; 0 for a document that is not in the list. The
    /// window comes up over the main window, or beside the window `from` where that is another one and the
    /// screen has room.
    void showDocument(const QByteArray& rtf, const QString& name, int number, const QWidget* from);
    /// Selects the line of the document that is shown, after one that could not be.
    void selectShownDocument();

  Q_SIGNALS:
    /// A line of the list was chosen.
    void documentChosen(int number);

  protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Form_Load();
    void listDocuments();
    void lstDocuments_Click(int line);
    void fill(const QString& name);
    void place(const QRect& where);
    void placeBeside(const QWidget& other);
    QSize usualSize() const;
    void Command1_Click();
    void txtFind_Change();
    void findNext();
    void find(int from);
    void setPageMargins();

    QByteArray document_;  // as it was read, byte for byte
    int number_ = 0;
    QPointer<const QWidget> from_;  // the window that asked for help
    QSize before_, narrowed_;       // its size before it was made narrower, and since
};

}  // namespace tessel
