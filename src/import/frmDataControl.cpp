// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/frmDataControl.h"

#include "app/HelpOpener.h"
#include "base/numbers.h"
#include "desktop/CaptionColour.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "journal/journal.h"

using namespace Qt::StringLiterals;

namespace tessel {

namespace {
constexpr int kHelpDocument = 104;
}

frmDataControl::frmDataControl(QWidget* parent) : QDialog(parent) {
    setupUi(this);
    for (QAbstractButton* button : findChildren<QAbstractButton*>())
        if (button->isCheckable()) colourWhileChecked(*button);
    connect(Command1, &QPushButton::clicked, this, guarded(this, [this] { Command1_Click(); }));
    connect(Command2, &QPushButton::clicked, this, guarded(this, [this] { reject(); }));
    offerHelp(*this, kHelpDocument, cmdHelp);
    // What is typed first replaces the default instead of following it.
    Text1->setFocus();
    Text1->selectAll();
}

frmDataControl::Entries frmDataControl::entries() const {
    Entries entered{Text1->text().toStdString(), Text2->text().toStdString(), {}};
    entered.options.EMCutoff = leadingNumber(entered.cutoff);
    entered.options.MinDistance = leadingNumber(entered.distance);
    entered.options.MinLineLength = 1;
    entered.options.NegateEM = Check1->isChecked();
    entered.options.DivideEMBy10 = Check2->isChecked();
    entered.options.DistanceMode = Option2->isChecked() ? 2 : Option3->isChecked() ? 3 : 1;
    return entered;
}

void frmDataControl::refuse(QLineEdit& box, const QString& message) {
    tell(this, message);
    box.setFocus();
    box.selectAll();
}

void frmDataControl::Command1_Click() {
    const auto [cutoff, distance, options] = entries();
    // Stored before they are checked; the measure of distance waits until the import is under way.
    SurveyParameters parameters = theSurvey();
    parameters.EMCutoff = options.EMCutoff;
    parameters.MinDistance = options.MinDistance;
    parameters.MinLineLength = options.MinLineLength;
    parameters.NegateEM = options.NegateEM;
    parameters.DivideEMBy10 = options.DivideEMBy10;
    theJournal().setParameters(parameters);

    if (!isNumeric(cutoff) || !isNumeric(distance)) {
        refuse(isNumeric(cutoff) ? *Text2 : *Text1, u"Non-numeric EM-cutoff or Minimum distance Input"_s);
        return;
    }
    if (cutoff.empty() || distance.empty()) {  // which the check above has refused already
        refuse(cutoff.empty() ? *Text1 : *Text2, u"Invalid EM-cutoff or Minimum distance Input"_s);
        return;
    }
    if (options.MinDistance < 0) {  // 0 may pass, whatever the message says
        refuse(*Text2, u"Error: Minimum distance must be > 0"_s);
        return;
    }
    accept();
    Q_EMIT parametersChosen(options);
}

}  // namespace tessel
