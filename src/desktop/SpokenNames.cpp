// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/SpokenNames.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

class SpokenLabel : public QAccessibleWidget {
  public:
    explicit SpokenLabel(QLabel* label) : QAccessibleWidget(label, QAccessible::StaticText), label_(label) {}

    QString text(QAccessible::Text kind) const override {
        QString said = QAccessibleWidget::text(kind);
        if (kind == QAccessible::Name && !label_->text().isEmpty()) said += u": "_s + label_->text();
        return said;
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        return state;
    }

  private:
    QLabel* label_;
};

// Labels of a class of their own say what they have to say by themselves.
QAccessibleInterface* spokenLabel(const QString& /*className*/, QObject* object) {
    if (qstrcmp(object->metaObject()->className(), "QLabel") != 0) return nullptr;
    auto* const label = static_cast<QLabel*>(object);
    return label->accessibleName().isEmpty() ? nullptr : new SpokenLabel(label);
}

}  // namespace

void speakLabelledValues() {
    QAccessible::installFactory(spokenLabel);
}

void nameClearButton(const QLineEdit& box) {
    for (QToolButton* const button : box.findChildren<QToolButton*>())
        button->setAccessibleName(u"Clear"_s);
}

}  // namespace tessel
