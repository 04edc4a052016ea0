// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/HelpOpener.h"

#include "app/frmHelpTesl.h"
#include "base/run_time_error.h"
#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QPointer>
#include <QScopeGuard>
#include <QShortcut>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

// Help documents take some hundred kilobytes; a larger file is none.
constexpr qint64 kLargestDocument = qint64{64} << 20;

frmHelpTesl& viewer();

QByteArray readDocument(const QString& path) {
    const std::string name = toPath(path);  // which Qt can open only when it is Unicode
    const auto unreadable = [&](const auto& why) { return RunTimeError::file(name, "cannot be read", why); };
    // Looked at before it is opened: reading from a pipe might wait for ever.
    struct stat status {};
    if (::stat(name.c_str(), &status) != 0) throw unreadable(errno);
    if (!S_ISREG(status.st_mode))
        throw unreadable(S_ISDIR(status.st_mode) ? "it is a folder" : "it is not a regular file");
    if (status.st_size > kLargestDocument) throw unreadable("it is too large for a help document");
    const int descriptor = ::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) throw unreadable(errno);
    QFile file;
    file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    QByteArray bytes = file.readAll();
    if (file.error() != QFile::NoError) throw unreadable(errno);
    return bytes;
}

// The list goes back to the document that is shown when the chosen one cannot be.
void show(int document) {
    frmHelpTesl& window = viewer();
    const auto goBack = qScopeGuard([&window] { window.selectShownDocument(); });
    openHelp(&window, document);
}

frmHelpTesl& viewer() {
    static QPointer<frmHelpTesl> window;
    if (!window) {
        window = new frmHelpTesl;
        QObject::connect(window, &frmHelpTesl::documentChosen, window,
                         [](int document) { runGuarded(window.data(), [document] { show(document); }); });
        QObject::connect(qApp, &QCoreApplication::aboutToQuit, window, &QObject::deleteLater);
    }
    return *window;
}

}  // namespace

void openHelp(QWidget* from, int document) {
    const QString path =
        fromPath(theSession().AppDir) + u"/helpdocs/hdoc%1.rtf"_s.arg(document, 3, 10, QChar(u'0'));
    if (::access(toPath(path).c_str(), F_OK) != 0) {
        tell(from, u"Warning!  File resource error.  VARN can not find the following file:\n"_s + path);
        return;
    }
    viewer().showDocument(readDocument(path), path.section(u'/', -1), document, from);
}

void offerHelp(QWidget& window, int document, QAbstractButton* button) {
    const auto open = guarded(&window, [&window, document] { openHelp(&window, document); });
    if (button != nullptr) QObject::connect(button, &QAbstractButton::clicked, &window, open);
    QObject::connect(new QShortcut(QKeySequence::HelpContents, &window), &QShortcut::activated, &window,
                     open);
}

}  // namespace tessel
