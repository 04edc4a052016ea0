#include "app/InterfaceControls.h"

#include "app/FileDialogs.h"
#include "app/MessageBox.h"
#include "app/TextEditor.h"
#include "app/run_time_error.h"
#include "app/survey.h"

#include <QFileInfo>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

// The suite's own way to spell it here, in lower case.
const QString kDefaultEditor = u"c:\\windows\\write.exe "_s;

void setResolution(QWidget* parent, double printScale, int dpi) {
    theSession().PrintScale = printScale;
    tell(parent, u"The printer resolution has been temporarily redefined to be %1 DPI."_s.arg(dpi));
}

}  // namespace

void mnuEL_Click() {
    const std::string log = theSession().DataDir + "/error_log.dat";
    if (!QFileInfo::exists(fromPath(log))) throw RunTimeError::file(log, "cannot be opened", ENOENT);
    startTextEditor(log);
}

void mnusetDTE_Click(QWidget* parent) {
    if (!ask(parent,
             u"Note: you should use the PELR program if you wish to perminantly\n"
             u"change the default text editor used by all VARN programs.\n"
             u"\n"
             u"However, you can temporarily reset the text editor now (for this session only).\n"
             u"\n"
             u"Would you like to temporarily reset the current, default text editor?"_s))
        return;
    // Programs carry .exe on some systems only.
    const QString chosen = askOpenFile(parent, u"Select a Text Editor"_s,
                                       u"Text Editor Programs (*.exe)|*.exe|All Files (*.*)|*"_s);
    const bool none = chosen.isEmpty();
    const QString editor = none ? kDefaultEditor : chosen + u' ';
    theSession().TextEditor = editor.toStdString();
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
