#include "app/HelpOpener.h"

#include "app/FileDialogs.h"
#include "app/Guarded.h"
#include "app/MessageBox.h"
#include "app/frmHelpTesl.h"
#include "app/run_time_error.h"
#include "app/survey.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QScopeGuard>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

// Help documents take some hundred kilobytes; a larger file is none.
constexpr qint64 kLargestDocument = qint64{64} << 20;

frmHelpTesl& viewer();

RunTimeError unreadable(const QString& path, const QString& reason) {
    return RunTimeError::file(toPath(path), "cannot be read", reason.toStdString());
}

QByteArray readDocument(const QString& path) {
    // Looked at before it is opened: reading from a pipe might wait for ever.
    const QFileInfo info(path);
    if (!info.isFile())
        throw unreadable(path, info.isDir() ? u"it is a folder"_s : u"it is not a regular file"_s);
    if (info.size() > kLargestDocument) throw unreadable(path, u"it is too large for a help document"_s);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw RunTimeError::file(toPath(path), "cannot be read", errno);
    const QByteArray bytes = file.readAll();
    if (file.error() != QFile::NoError) throw RunTimeError::file(toPath(path), "cannot be read", errno);
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
                         [](int document) { guarded(window, [document] { show(document); })(); });
        QObject::connect(qApp, &QCoreApplication::aboutToQuit, window, &QObject::deleteLater);
    }
    return *window;
}

}  // namespace

void openHelp(QWidget* from, int document) {
    const QString path =
        fromPath(theSession().AppDir) + u"/helpdocs/hdoc%1.rtf"_s.arg(document, 3, 10, QChar(u'0'));
    if (!QFileInfo::exists(path)) {
        tell(from, u"Warning!  File resource error.  VARN can not find the following file:\n"_s +
                       QDir::toNativeSeparators(path));
        return;
    }
    viewer().showDocument(readDocument(path), QFileInfo(path).fileName(), document, from);
}
