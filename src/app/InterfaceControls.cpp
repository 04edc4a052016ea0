// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/InterfaceControls.h"

#include "base/run_time_error.h"
#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "desktop/MessageBox.h"
#include "desktop/TextEditor.h"

#include <QAction>

#include <cerrno>
#include <filesystem>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

// The suite's own way to spell it here, in lower case.
const QString kDefaultEditor = u"c:\\windows\\write.exe "_s;

std::vector<std::string>& refusedSettings() {
    static std::vector<std::string> sentences;
    return sentences;
}

// The text, and in a paragraph of its own what was wrong with the settings file.
QString withRefusedSettings(QString text) {
    for (const std::string& sentence : refusedSettings())
        text += u"\n\n"_s + fromPath(sentence);
    return text;
}

void setResolution(QWidget* parent, double printScale, int dpi) {
    theSession().PrintScale = printScale;
    tell(parent, withRefusedSettings(
                     u"The printer resolution has been temporarily redefined to be %1 DPI."_s.arg(dpi)));
}

void requireProgram(const std::string& path) {
    if (::access(path.c_str(), F_OK) == 0 && ::access(path.c_str(), X_OK) != 0)
        throw RunTimeError::file(path, "cannot be used as text editor", errno);
}

// Programs carry .exe on some systems only.
#ifdef Q_OS_WIN
constexpr int kFirstFilter = 0;
#else
constexpr int kFirstFilter = 1;
#endif

}  // namespace

void setRefusedSettings(std::vector<std::string> sentences) {
    refusedSettings() = std::move(sentences);
}

void showResolution(QAction& dpi300, QAction& dpi600, QAction& dpi1200) {
    const double scale = theSession().PrintScale;
    const std::pair<QAction*, double> items[] = {{&dpi300, 1.0}, {&dpi600, 2.0}, {&dpi1200, 4.0}};
    for (const auto& [item, itsScale] : items) {
        item->setCheckable(true);
        item->setChecked(scale == itsScale);
    }
}

void mnuEL_Click() {
    const std::string log = theSession().DataDir + "/error_log.dat";
    std::error_code error;
    if (!std::filesystem::exists(log, error)) throw RunTimeError::file(log, "cannot be opened", ENOENT);
    startTextEditor(log);
}

void mnusetDTE_Click(QWidget* parent) {
    if (!ask(parent, withRefusedSettings(
                         u"Note: you should use the PELR program if you wish to perminantly\n"
                         u"change the default text editor used by all VARN programs.\n"
                         u"\n"
                         u"However, you can temporarily reset the text editor now (for this session only).\n"
                         u"\n"
                         u"Would you like to temporarily reset the current, default text editor?"_s)))
        return;
    const QString chosen =
        askOpenFile(parent, u"Select a Text Editor"_s,
                    u"Text Editor Programs (*.exe)|*.exe|All Files (*.*)|*"_s, kFirstFilter);
    const bool none = chosen.isEmpty();
    if (!none) requireProgram(toPath(chosen));
    const QString editor = none ? kDefaultEditor : chosen + u' ';
    theSession().TextEditor = toPath(editor);
    tell(parent, (none ? u"Note: the text editor has been reset to the default program "_s
                       : u"Note: the new selected text editor is "_s) +
                     editor);
}

void mnuDPI300_Click(QWidget* parent) {
    setResolution(parent, 1.0, 300);
}
void mnuDPI600_Click(QWidget* parent) {
    setResolution(parent, 2.0, 600);
}
void mnuDPI1200_Click(QWidget* parent) {
    setResolution(parent, 4.0, 1200);
}

}  // namespace tessel
