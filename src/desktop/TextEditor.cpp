// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/TextEditor.h"

#include "base/run_time_error.h"
#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "desktop/MessageBox.h"
#include "desktop/editor_settings.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

/// What the desktop's opener ends with when nothing has been opened.
enum OpenerResult { kNoSuchFile = 2, kNoTool = 3, kActionFailed = 4 };

RunTimeError noApplication(const std::string& path) {
    return RunTimeError::file(path, "cannot be opened",
                              "no text editor has been set and the desktop has no application for it");
}

// The address of a file, in which every byte has its place.
QByteArray addressOf(const QString& path) {
    return "file://" + QByteArray::fromStdString(toPath(path)).toPercentEncoding("/");
}

// A name as a process of Qt's takes it: what is no Unicode as an address.
QString asArgument(const QString& path) {
    return legible(path) == path ? path : QString::fromLatin1(addressOf(path));
}

// Processes are not to end with this program, as they would with their QProcess: those that still run at its
// end belong to an object that is never destroyed.
QObject* ownerOfProcesses() {
    static auto* const owner = new QObject;
    return owner;
}

QProcess* newProcess() {
    auto* const process = new QProcess(ownerOfProcesses());
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    return process;
}

bool isStarted(QProcess* process) {
    if (process->waitForStarted()) return true;
    delete process;
    return false;
}

// Qt would change names that are no Unicode: before it comes to its own start, the child has made this one.
bool startProgram(const EditorCommand& command) {
    std::vector<std::string> words{toPath(command.program)};
    std::ranges::transform(command.arguments, std::back_inserter(words), toPath);
    std::vector<char*> pointers(words.size() + 1);
    std::ranges::transform(words, pointers.begin(), [](std::string& word) { return word.data(); });
    QProcess* const process = newProcess();
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->setInputChannelMode(QProcess::ForwardedInputChannel);
    process->setChildProcessModifier([&pointers] {
        ::setsid();
        ::execv(pointers.front(), pointers.data());
    });
    process->start(command.program, command.arguments);
    return isStarted(process);
}

// The desktop's opener says only at its end that it has found no application. It may be the application by
// then.
bool startDesktopOpener(const QString& opener, const QString& path) {
    QProcess* const process = newProcess();
    QObject::connect(process, &QProcess::finished, process, [path](int code) {
        if (code >= kNoSuchFile && code <= kActionFailed)
            tell(nullptr, fromPath(noApplication(toPath(path)).description()));
    });
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->setChildProcessModifier([] { ::setsid(); });
    process->start(opener, {asArgument(path)});
    return isStarted(process);
}

bool openOnDesktop(const QString& path) {
    const QString opener = QStandardPaths::findExecutable(u"xdg-open"_s);
    return opener.isEmpty() ? QDesktopServices::openUrl(QUrl::fromEncoded(addressOf(path)))
                            : startDesktopOpener(opener, path);
}

ProgramStarter& currentStarter() {
    static ProgramStarter starter = startProgram;
    return starter;
}

DesktopOpener& currentOpener() {
    static DesktopOpener opener = openOnDesktop;
    return opener;
}

bool isFile(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

QString executable(const QString& name) {
    const std::string path = toPath(name);
    if (name.startsWith(u'/')) return isFile(path) && ::access(path.c_str(), X_OK) == 0 ? name : QString();
    return QStandardPaths::findExecutable(name);
}

}  // namespace

EditorCommand splitEditorCommand(const QString& command) {
    const QString text = command.trimmed();
    if (text.startsWith(u'"')) {
        QStringList parts = QProcess::splitCommand(text);
        if (parts.isEmpty()) return {};
        const QString program = executable(parts.takeFirst());
        return program.isEmpty() ? EditorCommand{} : EditorCommand{program, parts};
    }
    for (qsizetype end = text.size(); end > 0; end = text.lastIndexOf(u' ', end - 1)) {
        const QString program = executable(text.left(end).trimmed());
        if (!program.isEmpty()) return {program, QProcess::splitCommand(text.mid(end))};
    }
    return {};
}

bool isFallbackEditor(const QString& command) {
    return command.trimmed().compare(QString::fromUtf8(kFallbackEditor).trimmed(), Qt::CaseInsensitive) == 0;
}

void startTextEditor(const std::string& path) {
    const QString editor = fromPath(theSession().TextEditor);
    EditorCommand command = splitEditorCommand(editor);
    if (command.program.isEmpty() && isFallbackEditor(editor)) {
        if (currentOpener()(fromPath(path))) return;
        throw noApplication(path);
    }
    const std::string name = toPath(editor.trimmed());
    if (command.program.isEmpty())
        throw RunTimeError::file(
            path, "cannot be opened",
            isFile(name) ? name + " may not be executed" : "there is no program " + name);
    command.arguments << fromPath(path);
    if (!currentStarter()(command))
        throw RunTimeError::file(path, "cannot be opened", name + " cannot be started");
}

void setProgramStarter(ProgramStarter starter) {
    currentStarter() = starter ? std::move(starter) : ProgramStarter(startProgram);
}

void setDesktopOpener(DesktopOpener opener) {
    currentOpener() = opener ? std::move(opener) : DesktopOpener(openOnDesktop);
}

}  // namespace tessel
