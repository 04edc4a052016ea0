#include "app/frmAbout.h"

#include "app/Guarded.h"

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
    setupUi(this);
    QFont title = lblName->font();
    title.setPointSizeF(title.pointSizeF() * 1.8);
    title.setBold(true);
    lblName->setFont(title);
    connect(Command1, &QPushButton::clicked, this, guarded(this, [this] { close(); }));
}
