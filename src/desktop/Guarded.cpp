// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/Guarded.h"

#include "base/run_time_error.h"
#include "desktop/FileNames.h"
#include "desktop/MessageBox.h"
#include "desktop/SpokenNames.h"

#include <csignal>
#include <new>

namespace tessel {

namespace {

QString outOfMemory(std::uint64_t changesBefore) {
    const QString description = QString::fromStdString(RunTimeError::outOfMemory().description());
    return description +
           (surveyChanges() == changesBefore
                ? QStringLiteral("\nThe survey is as it was.")
                : QStringLiteral("\nThe survey has been changed as asked; what shows it may not "
                                 "have followed."));
}

QString descriptionOfCurrentException(std::uint64_t changesBefore) {
    try {
        throw;
    } catch (const RunTimeError& error) {
        return fromPath(error.description());
    } catch (const std::bad_alloc&) {
        return outOfMemory(changesBefore);
    } catch (const std::exception& error) {
        return QString::fromUtf8(error.what());
    } catch (...) {
        return QStringLiteral("Unexpected error");
    }
}

}  // namespace

void reportRunTimeError(QWidget* parent, std::uint64_t changesBefore) {
    tell(parent, descriptionOfCurrentException(changesBefore));
}

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    // Handled rather than ignored: what is ignored would be inherited by the editors that we start.
    std::signal(SIGXFSZ, [](int) {});
    speakLabelledValues();
}

bool Application::notify(QObject* receiver, QEvent* event) {
    const std::uint64_t changesBefore = surveyChanges();
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        reportRunTimeError(activeWindow(), changesBefore);
        return true;
    }
}

}  // namespace tessel
