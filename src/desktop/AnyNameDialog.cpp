// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/AnyNameDialog.h"

#include "base/input_file.h"
#include "desktop/FileNames.h"
#include "desktop/MessageBox.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QTreeView>

#include <filesystem>

namespace tessel {

namespace fs = std::filesystem;

namespace {

QLineEdit* nameBox(const QFileDialog& dialog) {
    return dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
}

// Sizes and times are shown whole; names get the rest. Only what is in sight is measured.
void showWholeColumns(const QFileDialog& dialog) {
    const auto* const list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
    if (list == nullptr || list->header()->count() == 0) return;
    list->header()->setResizeContentsPrecision(0);
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
}

// The library's own looks into files to tell their kind, and into those of the system's own too.
class PlainIcons : public QFileIconProvider {
  public:
    QIcon icon(const QFileInfo& file) const override { return QFileIconProvider::icon(kindOf(file)); }
    QIcon icon(IconType kind) const override { return QFileIconProvider::icon(kind); }
    QString type(const QFileInfo& file) const override {
        return kindOf(file) == Folder ? QFileDialog::tr("Folder") : QFileDialog::tr("File");
    }

  private:
    static IconType kindOf(const QFileInfo& file) { return file.isDir() ? Folder : File; }
};

}  // namespace

AnyNameDialog::AnyNameDialog(QWidget* parent, const QString& caption) : QFileDialog(parent, caption) {
    static PlainIcons icons;
    setIconProvider(&icons);
    // A press on the library's grip while the window is going ends the program; windows have frames to drag.
    setSizeGripEnabled(false);
}

void AnyNameDialog::propose(const QString& path) {
    const bool isTakenAsItStands = legible(path) == path && pathMeantBy(path) == toPath(path);
    // Between quotes Qt's dialog looks for several names.
    if (path.isEmpty() || path.contains(u'"') || !isTakenAsItStands) return;
    selectFile(path);  // which its own dialog shows selected, so that it can be typed over
}

// What is typed, when it is a name that Qt's own dialog does not take; else empty.
std::string AnyNameDialog::typedName() const {
    const QLineEdit* const box = nameBox(*this);
    if (box == nullptr) return {};
    const QString text = box->text();
    const std::string path = pathMeantBy(text, toPath(directory().absolutePath()));
    const bool isAddress = text.trimmed().startsWith(QStringLiteral("file:"));
    const bool isForeign = legible(fromPath(path)) != fromPath(path);
    return (isAddress || isForeign) && takes(path) ? path : std::string();
}

bool AnyNameDialog::takes(const std::string& path) const {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::exists(status)) return !fs::is_directory(status);
    return acceptMode() == AcceptSave && fs::is_directory(fs::path(path).parent_path(), error);
}

bool AnyNameDialog::refuses(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (acceptMode() == AcceptSave || !fs::exists(status) || fs::is_directory(status) || isInputFile(path))
        return false;
    tell(this,
         legible(fromPath(path)) + QStringLiteral(" cannot be read: it is a device, a pipe or a file of the "
                                                  "system's own.\nChoose a file that holds data."));
    return true;
}

// In the words of Qt's own question.
bool AnyNameDialog::mayReplace(const std::string& path) {
    const QString name = fromPath(fs::path(path).filename().string());
    return ask(this, tr("%1 already exists.\nDo you want to replace it?").arg(name), windowTitle());
}

void AnyNameDialog::accept() {
    const std::string path = typedName();
    if (refuses(path.empty() ? toPath(selectedFiles().value(0)) : path)) {
        // One of the desktop's own, which has no box of ours, may be gone by now: nobody could end it any
        // more.
        if (nameBox(*this) == nullptr) reject();
        return;
    }
    if (path.empty()) return QFileDialog::accept();
    std::error_code error;
    if (acceptMode() == AcceptSave && fs::exists(path, error) && !mayReplace(path)) return;
    typed_ = fromPath(path);
    // Not QFileDialog's, which would look for a file of the name as it is shown.
    QDialog::accept();  // NOLINT(bugprone-parent-virtual-call)
}

// Qt disables the button while a name stands in the box that it does not know.
void AnyNameDialog::enableAccept() {
    auto* const buttons = findChild<QDialogButtonBox*>();
    if (buttons == nullptr || typedName().empty()) return;
    for (QAbstractButton* button : buttons->buttons())
        if (buttons->buttonRole(button) == QDialogButtonBox::AcceptRole) button->setEnabled(true);
}

void AnyNameDialog::showEvent(QShowEvent* event) {
    showWholeColumns(*this);
    // Behind what Qt has connected.
    if (const QLineEdit* const box = nameBox(*this))
        connect(box, &QLineEdit::textChanged, this, &AnyNameDialog::enableAccept, Qt::UniqueConnection);
    QFileDialog::showEvent(event);
}

}  // namespace tessel
