// SPDX-License-Identifier: GPL-3.0-or-later
// What happens to a sensor file while the program has it in its hands, through the real windows of both
// imports: they say what, where and why, and the survey and the error log stay as they were.
#include "journal/journal.h"
#include "support/RunningProgram.h"
#include "support/reads.h"

#include <sys/socket.h>
#include <sys/un.h>

namespace tessel {

namespace {

namespace fs = std::filesystem;

enum class Import { kTrimble, kGeneric };

// Enough lines to be read in several blocks, for both imports.
constexpr int kSites = 40'000;

bool makeSocket(const std::string& path) {
    sockaddr_un address{AF_UNIX, {}};
    if (path.size() >= sizeof address.sun_path) return false;
    path.copy(address.sun_path, path.size());
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const bool made = ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(socket);
    return made;
}

class SourceFaults : public testing::TestWithParam<Import>, protected RunningProgram {
  protected:
    SourceFaults() : RunningProgram(shortSurvey()) { writeFile(file, sensorLines(kSites)); }

    // Fills the windows of the import in, lets `meanwhile` happen, and clicks for the last time.
    void runImport(const std::function<void()>& meanwhile) {
        GetParam() == Import::kTrimble ? importTrimble(meanwhile) : importGeneric(meanwhile);
    }
    void importTrimble(const std::function<void()>& meanwhile) {
        importTrimbleFile(*main, sensorEntries(file), [&](const QWidget& window) {
            if (window.objectName() == u"frmIniDisplay"_s) meanwhile();
        });
    }
    void importGeneric(const std::function<void()>& meanwhile) {
        chooseItem(*main, u"mnuOpen2"_s);
        QWidget& window = shownWindow(u"frmGeneric"_s);
        typeInto(window, u"txtGFile"_s, fromPath(file));
        clickOn(window, u"optCF_4"_s);
        meanwhile();
        clickOn(window, u"cmdImport"_s);
        if (window.isVisible()) clickOn(window, u"cmdCancel"_s);
        waitUntilClosed(u"frmGeneric"_s);
    }
    // The same, with something that happens before one of the readings.
    void importAnd(int reading, const std::function<void(int)>& act) {
        std::optional<BeforeReading> moment;
        runImport([&] { moment.emplace(reading, act); });
        EXPECT_TRUE(moment && moment->happened());
    }

    void expectReason(const QString& reason) { boxes.tell(fromPath(file) + u" cannot be read: "_s + reason); }
    void expectReport(int sites) {
        GetParam() == Import::kTrimble ? expectTrimbleReport(sites, 0) : expectGenericReport(sites, 0);
    }

    // Survey and log are those of before, and the program goes on: what failed works when nothing is wrong.
    void expectAllAsBefore() {
        EXPECT_EQ(boxes.pending(), 0);
        expectSurveyAndLogAsBefore();
        EXPECT_NE(main->cursor().shape(), Qt::WaitCursor);
        fs::remove(file);
        writeFile(file, sensorLines(7));
        expectReport(7);
        runImport([] {});
        EXPECT_EQ(theSurvey().NumSites, 7);
    }

    const std::string file = folder / "survey.dat";
};

}  // namespace

TEST_P(SourceFaults, AFileThatShrinksWhileItIsReadIsReported) {
    for (const auto& [reading, left] : {std::pair(3, 1000), {1, 0}}) {
        writeFile(file, sensorLines(kSites));
        expectReason(u"it has become shorter meanwhile"_s);
        importAnd(reading,
                  [&, left = left](int) { fs::resize_file(file, static_cast<std::uintmax_t>(left)); });
    }
    expectAllAsBefore();
}

TEST_P(SourceFaults, ACardThatCannotBeReadOrIsPulledOutMeanwhileIsReported) {
    for (const int reading : {1, 2}) {
        expectReason(u"Input/output error"_s);
        importAnd(reading, breakDevice);
    }
    expectAllAsBefore();
}

// Who holds a file open keeps it.
TEST_P(SourceFaults, AFileThatIsDeletedOrReplacedWhileItIsReadIsReadToItsEnd) {
    expectReport(kSites);
    importAnd(2, [&](int) { fs::remove(file); });
    EXPECT_EQ(theSurvey().NumSites, kSites);
    writeFile(file, sensorLines(kSites));
    expectReport(kSites);
    importAnd(2, [&](int) {
        writeFile(folder / "other.dat", "no number anywhere");
        fs::rename(folder / "other.dat", file);
    });
    EXPECT_EQ(theSurvey().NumSites, kSites);
}

TEST_P(SourceFaults, AFileThatTurnsIntoADeviceAPipeOrASocketIsRefused) {
    const auto expectRefusal = [this] {
        if (GetParam() == Import::kTrimble)
            expectReason(u"it is not a regular file"_s);
        else
            boxes.tell(u"Please enter a valid input filename."_s);
    };
    const auto importWhenItHasTurned = [this](const std::function<void()>& turn) {
        runImport([&] {
            fs::remove(file);
            turn();
        });
        fs::remove(file);
        writeFile(file, sensorLines(kSites));
    };
    expectRefusal();
    importWhenItHasTurned([&] { fs::create_symlink("/dev/zero", file); });
    expectRefusal();
    importWhenItHasTurned([&] { ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0); });
    expectRefusal();
    importWhenItHasTurned([&] { ASSERT_TRUE(makeSocket(file)); });
    expectAllAsBefore();
}

INSTANTIATE_TEST_SUITE_P(Of, SourceFaults, testing::Values(Import::kTrimble, Import::kGeneric),
                         [](const auto& kind) {
                             return kind.param == Import::kTrimble ? "TheTrimbleImport" : "TheGenericImport";
                         });

}  // namespace tessel
