// SPDX-License-Identifier: GPL-3.0-or-later
// Raw events in the real windows, without waiting for anything:
//     event_monkey --seed N --events N
// When it ends the program, the last events stand on standard error.
#include "desktop/Guarded.h"
#include "journeys/monkey/EventMonkey.h"

namespace tessel {

namespace {

// What the platform without a display cannot do is of no interest here.
void passOn(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "%s\n", qPrintable(message));
}

// Swallows what would open in a browser.
class Links : public QObject {
    Q_OBJECT
  public Q_SLOTS:
    void open(const QUrl&) {}
};

}  // namespace

}  // namespace tessel

using namespace tessel;

int main(int argc, char** argv) {
    qInstallMessageHandler(passOn);
    // What Qt remembers of its file dialogs is no user's.
    const TemporaryFolder home;
    qputenv("HOME", home.path().c_str());
    qputenv("XDG_CONFIG_HOME", home.path().c_str());
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    Application::setStyle(u"Fusion"_s);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({u"seed"_s, u"Seed of the choices."_s, u"number"_s, u"1"_s});
    parser.addOption({u"events"_s, u"How many events to send."_s, u"number"_s, u"20000"_s});
    parser.process(application);
    Links links;
    for (const QString& scheme : {u"http"_s, u"https"_s, u"file"_s, u"mailto"_s})
        QDesktopServices::setUrlHandler(scheme, &links, "open");
    EventMonkey monkey(parser.value(u"seed"_s).toULongLong());
    const std::string broken = monkey.run(parser.value(u"events"_s).toLong());
    std::printf("%s\n", broken.empty() ? "still alive" : broken.c_str());
    return broken.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}

#include "event_monkey.moc"
