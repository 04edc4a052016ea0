// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/frmDataControl.h"

#include "app/HelpOpener.h"
#include "base/numbers.h"
#include "desktop/CaptionColour.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"

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

int frmDataControl::chosenDistance() const {
    if (Option2->isChecked()) return 2;
    return Option3->isChecked() ? 3 : 1;
}

void frmDataControl::refuse(QLineEdit& box, const QString& message) {
    tell(this, message);
    box.setFocus();
    box.selectAll();
}

void frmDataControl::Command1_Click() {
    const std::string cutoff = Text1->text().toStdString();
    const std::string distance = Text2->text().toStdString();
    // Stored before they are checked; the measure of distance waits until the import is under way.
    Survey& survey = theSurvey();
    survey.EMCutoff = leadingNumber(cutoff);
    survey.MinDistance = leadingNumber(distance);
    survey.MinLineLength = 1;
    survey.NegateEM = Check1->isChecked();
    survey.DivideEMBy10 = Check2->isChecked();

    if (!isNumeric(cutoff) || !isNumeric(distance)) {
        refuse(isNumeric(cutoff) ? *Text2 : *Text1, u"Non-numeric EM-cutoff or Minimum distance Input"_s);
        return;
    }
    if (cutoff.empty() || distance.empty()) {  // which the check above has refused already
        refuse(cutoff.empty() ? *Text1 : *Text2, u"Invalid EM-cutoff or Minimum distance Input"_s);
        return;
    }
    if (survey.MinDistance < 0) {  // 0 may pass, whatever the message says
        refuse(*Text2, u"Error: Minimum distance must be > 0"_s);
        return;
    }
    TrimbleOptions options;
    options.EMCutoff = survey.EMCutoff;
    options.MinDistance = survey.MinDistance;
    options.MinLineLength = survey.MinLineLength;
    options.NegateEM = survey.NegateEM;
    options.DivideEMBy10 = survey.DivideEMBy10;
    options.DistanceMode = chosenDistance();
    accept();
    Q_EMIT parametersChosen(options);
}

}  // namespace tessel
