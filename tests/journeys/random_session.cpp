// SPDX-License-Identifier: GPL-3.0-or-later
// Random acts in the real windows beside a plain model of the program:
//     random_session --seed N --acts N
// With --seed 0 every session of a thousand acts has the next seed, from 1 on.
#include "desktop/Guarded.h"
#include "journeys/random/RandomSession.h"

namespace tessel {

namespace {

constexpr long kActsOfASession = 1000;

// What the platform without a display cannot do is of no interest here.
void passOn(QtMsgType, const QMessageLogContext&, const QString& message) {
    if (!message.startsWith(u"This plugin does not support"_s))
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

bool runSession(std::uint64_t seed, long acts, std::map<std::string, long>& made) {
    RandomSession session(seed);
    const std::string difference = session.run(acts);
    for (const std::string& name : session.notReached())
        std::printf("not reached: %s\n", name.c_str());
    for (const auto& [name, count] : session.actsMade())
        made[name] += count;
    if (!difference.empty()) std::printf("%s\n", difference.c_str());
    return difference.empty();
}

}  // namespace

}  // namespace tessel

using namespace tessel;

int main(int argc, char** argv) {
    qInstallMessageHandler(passOn);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    Application::setStyle(u"Fusion"_s);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption(
        {u"seed"_s, u"Seed of the choices; 0: another one for each thousand acts."_s, u"number"_s, u"1"_s});
    parser.addOption({u"acts"_s, u"How many acts to make."_s, u"number"_s, u"1000"_s});
    parser.process(application);
    const std::uint64_t seed = parser.value(u"seed"_s).toULongLong();
    const long acts = parser.value(u"acts"_s).toLong();
    std::map<std::string, long> made;
    bool same = true;
    if (seed > 0)
        same = runSession(seed, acts, made);
    else
        for (long done = 0; done < acts && same; done += kActsOfASession)
            same = runSession(static_cast<std::uint64_t>(done / kActsOfASession + 1), kActsOfASession, made);
    for (const auto& [name, count] : made)
        std::printf("%8ld %s\n", count, name.c_str());
    std::printf(same ? "no difference\n" : "a difference, see above\n");
    return same ? 0 : 1;
}
