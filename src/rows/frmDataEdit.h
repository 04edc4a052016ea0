#pragma once

#include "rows/row_editing.h"
#include "ui_frmDataEdit.h"

#include <QDialog>
#include <QList>

class frmMain;

/// Joins two rows, deletes a row, or finds all rows anew with another distance. A refused entry changes
/// nothing and empties the dialog; an operation that was done closes it, unless it found too many rows.
class frmDataEdit : public QDialog, public Ui::frmDataEdit {
    Q_OBJECT

  public:
    explicit frmDataEdit(frmMain& main);

  Q_SIGNALS:
    /// Sites or rows have changed.
    void surveyChanged();

  protected:
    void changeEvent(QEvent* event) override;

  private:
    struct Input {
        QLabel* label;
        QLineEdit* box;
        QLabel* unit = nullptr;  ///< null for a row number
    };
    struct Operation {
        QRadioButton* option;
        QList<Input> inputs;
        void (frmDataEdit::*run)();
        int distanceMode;  ///< of the recalculations
    };

    static QList<QWidget*> widgetsOf(const Input& input);
    void Form_Load();
    void followRowLimit();
    void Option_Click(const Operation& operation);
    void Command1_Click();
    void joinRows();
    void deleteRow();
    void recalculate();
    bool refused(EntryFault fault, bool twoNumbers);
    void noSitesLeft();
    const Operation* chosenOperation() const;

    frmMain& main_;
    QList<Operation> operations_;
};
