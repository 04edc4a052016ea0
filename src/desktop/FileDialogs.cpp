// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/FileDialogs.h"

#include "desktop/AnyNameDialog.h"
#include "desktop/OpenBox.h"

#include <QPointer>

#include <utility>

namespace tessel {

namespace {

FileResponder& currentResponder() {
    static FileResponder responder;
    return responder;
}

// On the heap, because its parent owns it.
AnyNameDialog* makeDialog(QWidget* parent, const FileQuestion& question) {
    auto* const made = new AnyNameDialog(parent, question.caption);
    AnyNameDialog& dialog = *made;
    dialog.setObjectName(QStringLiteral("CommonDialog1"));
    dialog.setAcceptMode(question.toSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(question.toSave ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setNameFilters(nameFilters(question.filter));
    dialog.selectNameFilter(nameFilters(question.filter).value(question.firstFilter));
    dialog.setDefaultSuffix(question.suffix);
    dialog.propose(question.proposed);
    return made;
}

QString showOnScreen(QWidget* parent, const FileQuestion& question) {
    const OpenBox open(parent);
    const QPointer<AnyNameDialog> dialog = makeDialog(parent, question);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    QString chosen = dialog && accepted ? dialog->chosen() : QString();
    delete dialog;
    return chosen;
}

QString respond(QWidget* parent, const FileQuestion& question) {
    return currentResponder() ? currentResponder()(question) : showOnScreen(parent, question);
}

}  // namespace

QString askOpenFile(QWidget* parent, const QString& caption, const QString& filter, int firstFilter) {
    return respond(parent, {caption, filter, false, {}, {}, firstFilter});
}

QString askSaveFile(QWidget* parent, const QString& caption, const QString& filter, const QString& suffix,
                    const QString& proposed) {
    return respond(parent, {caption, filter, true, suffix, proposed, 0});
}

void setFileResponder(FileResponder responder) {
    currentResponder() = std::move(responder);
}

QStringList nameFilters(const QString& filter) {
    // Qt takes the pattern from the last parentheses and hides them, which leaves the description as it is.
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        filters << QStringLiteral("%1 (%2)").arg(parts[i], parts[i + 1]);
    return filters;
}

}  // namespace tessel
