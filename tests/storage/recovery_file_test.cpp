// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/recovery_file.h"

#include "base/run_time_error.h"
#include "storage/recovery_worker.h"
#include "storage/work_stream.h"
#include "support/file_calls.h"
#include "support/journal_bits.h"
#include "support/run_time_errors.h"
#include "support/survey_bits.h"
#include "support/temporary_folder.h"

#include <sys/wait.h>

namespace tessel {

namespace {

namespace fs = std::filesystem;

// All of the work in one number: two that are the same have the same bits.
std::uint64_t digestOf(const Journal& journal, const SavedRecords& records = {}) {
    std::uint64_t digest = 0;
    ByteWriter out([&](std::string_view piece) { digest = digest * 31 + checksumOf(piece); });
    writeWork(out, journal, records);
    out.finish();
    return digest;
}

// More than can be written anew without anybody waiting for it.
constexpr SiteIndex kManySites = RecoveryFile::kCostly / 32;

class Recovery : public testing::Test {
  protected:
    std::string place() const { return folder / "state"; }
    std::string onlyFile() const {
        const fs::directory_iterator files(place());
        EXPECT_EQ(std::distance(begin(files), end(files)), 1);
        return fs::directory_iterator(place())->path().string();
    }
    SavedWork recovered(std::size_t mostBytes = SIZE_MAX, bool* isAll = nullptr) const {
        const auto left = findLeftWork(place());
        EXPECT_EQ(left.size(), 1U);
        return left.empty() ? SavedWork() : left.front().read(mostBytes, isAll);
    }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(Recovery, BringsBackEverySessionToTheBit) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        std::uint64_t expected = 0;
        {
            Worker worker(place());
            worker.work(seed, 50);
            expected = digestOf(worker.journal);
        }
        SavedWork work = recovered();
        ASSERT_EQ(digestOf(work.journal), expected);
        fs::remove_all(place());
    }
}

TEST_F(Recovery, BringsBackWhatIsKnownOfImports) {
    std::uint64_t expected = 0;
    {
        Worker worker(place());
        worker.work(3, 5);
        worker.records.imports.resize(1);
        worker.records.imports[0].summary.path = "field.dat";
        worker.keeper.follow(worker.journal, worker.records);
        expected = digestOf(worker.journal, worker.records);
    }
    const SavedWork work = recovered();
    EXPECT_EQ(digestOf(work.journal, work.records), expected);
    EXPECT_EQ(work.records.imports.at(0).summary.path, "field.dat");
}

// A child does what it likes until it is killed. It says what it has done before and after every event: what
// comes back is the work after the last event that it had finished, or after the one that it was about to.
TEST_F(Recovery, AfterAnyKillBringsBackTheLastThingDone) {
    std::mt19937 random(77);
    for (int turn = 0; turn < 100; ++turn) {
        SCOPED_TRACE(turn);
        std::array<int, 2> pipe{};
        ASSERT_EQ(::pipe(pipe.data()), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            Worker worker(place());
            worker.journal.watch([&](JournalEvent event) {
                const std::uint64_t digest = digestOf(worker.journal);
                static_cast<void>(!::write(pipe[1], &digest, sizeof digest));
                worker.keeper.follow(event, worker.journal, {});
                static_cast<void>(!::write(pipe[1], &digest, sizeof digest));
            });
            for (unsigned seed = 1000 + static_cast<unsigned>(turn);; ++seed)
                worker.work(seed, 30);
        }
        ::close(pipe[1]);
        std::vector<std::uint64_t> said;
        const auto hear = [&] {
            std::uint64_t digest = 0;
            if (::read(pipe[0], &digest, sizeof digest) != sizeof digest) return false;
            said.push_back(digest);
            return true;
        };
        for (auto count = 1 + random() % 60; count > 0; --count)
            hear();
        ::usleep(static_cast<useconds_t>(random() % 2000));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        while (hear()) {
        }
        ::close(pipe[0]);
        const std::size_t done = said.size() / 2;
        auto left = findLeftWork(place());
        if (left.empty()) {
            // Killed before the first change was on the disk: nothing but what is no change had happened.
            EXPECT_LE(done, 1U);
            fs::remove_all(place());
            continue;
        }
        ASSERT_EQ(left.size(), 1U);
        const SavedWork work = left.front().read();
        const std::uint64_t digest = digestOf(work.journal);
        const bool isLastDone = done > 0 && digest == said[2 * done - 1];
        const bool isUnderWay = said.size() % 2 == 1 && digest == said.back();
        EXPECT_TRUE(isLastDone || isUnderWay) << done << " done";
        fs::remove_all(place());
    }
}

TEST_F(Recovery, OfAFileThatIsTornAnywhereBringsBackWhatWasWholeInIt) {
    std::vector<std::uint64_t> digests;
    {
        Worker worker(place());
        worker.journal.watch([&](JournalEvent event) {
            worker.keeper.follow(event, worker.journal, {});
            digests.push_back(digestOf(worker.journal));
        });
        worker.work(12, 25);
    }
    const std::string path = onlyFile(), whole = readFile(path);
    std::mt19937 random(1);
    std::size_t last = 0;
    for (std::size_t length = 0; length <= whole.size(); length += 1 + random() % (whole.size() / 150)) {
        writeFile(path, whole.substr(0, length));
        const auto left = findLeftWork(place());
        if (left.empty()) {
            EXPECT_EQ(last, 0U) << "only what is torn in its first record goes";
            continue;
        }
        const auto found = std::ranges::find(digests, digestOf(left.front().read().journal));
        ASSERT_NE(found, digests.end()) << length;
        const auto place = static_cast<std::size_t>(found - digests.begin()) + 1;
        EXPECT_GE(place + 1, last) << length;
        last = std::max(last, place);
    }
    EXPECT_GT(last, 10U);
}

TEST_F(Recovery, OfAFileThatIsDamagedAnywhereEndsBeforeTheDamage) {
    Worker(place()).work(13, 20);
    const std::string path = onlyFile(), whole = readFile(path);
    std::mt19937 random(2);
    for (int turn = 0; turn < 300; ++turn) {
        std::string bytes = whole;
        bytes[random() % bytes.size()] ^= static_cast<char>(1 + random() % 255);
        writeFile(path, bytes);
        for (const LeftWork& work : findLeftWork(place())) {
            const std::string why = descriptionOf([&work] { EXPECT_GT(work.read().journal.size(), 0U); });
            EXPECT_TRUE(why == "no error" || why.starts_with(path + " cannot be read: ")) << why;
        }
        EXPECT_TRUE(fs::exists(path)) << "what is damaged is not taken away";
    }
}

TEST_F(Recovery, IsNotTakenFromAProgramThatLives) {
    Worker worker(place()), other(place());
    worker.work(4, 5);
    other.work(5, 5);
    EXPECT_TRUE(findLeftWork(place()).empty());
    EXPECT_EQ(std::distance(fs::directory_iterator(place()), fs::directory_iterator()), 2);
}

TEST_F(Recovery, IsOfferedToOneProgramAtATime) {
    Worker(place()).work(4, 5);
    {
        const auto held = findLeftWork(place());
        EXPECT_EQ(held.size(), 1U);
        EXPECT_TRUE(findLeftWork(place()).empty());
    }
    EXPECT_EQ(findLeftWork(place()).size(), 1U);
}

TEST_F(Recovery, OffersTheLatestFirstAndClearsAwayWhatHoldsNothing) {
    for (const unsigned seed : {4U, 5U})
        Worker(place()).work(seed, 5);
    ASSERT_EQ(findLeftWork(place()).size(), 2U);
    writeFile(place() + "/recovery-1-0", "VARN-Tessel recovery 1\nhalf");
    writeFile(place() + "/notes.txt", "somebody's");
    EXPECT_EQ(findLeftWork(place()).size(), 2U);
    EXPECT_FALSE(fs::exists(place() + "/recovery-1-0"));
    EXPECT_TRUE(fs::exists(place() + "/notes.txt"));
    EXPECT_TRUE(findLeftWork(folder / "none").empty());
    EXPECT_TRUE(findLeftWork("").empty());
}

TEST_F(Recovery, LeavesAloneWhatItDoesNotKnowOrCannotReadNow) {
    Worker(place()).work(4, 5);
    const std::string path = fs::directory_iterator(place())->path().string(), bytes = readFile(path);
    writeFile(place() + "/recovery-1-0", "VARN-Tessel recovery 2\nof a later version");
    EXPECT_EQ(findLeftWork(place()).size(), 1U);
    EXPECT_TRUE(fs::exists(place() + "/recovery-1-0"));
    std::string damaged = bytes;
    damaged[60] = static_cast<char>(damaged[60] ^ 1);
    writeFile(path, damaged);
    const auto left = findLeftWork(place());
    ASSERT_EQ(left.size(), 1U) << "it can still be copied, and discarded";
    EXPECT_EQ(descriptionOf([&] { left.front().read(); }), path + " cannot be read: nothing in it is whole");
}

TEST_F(Recovery, IsThereFromTheFirstChangeOnUntilItIsDiscarded) {
    Worker worker(place());
    worker.journal.recount([](const Survey&, SurveyCounts&) {});
    EXPECT_FALSE(fs::exists(place()));
    worker.work(4, 5);
    EXPECT_TRUE(fs::exists(onlyFile()));
    worker.keeper.discard();
    EXPECT_TRUE(fs::is_empty(place()));
    worker.journal.noteExport();
    EXPECT_TRUE(fs::is_empty(place()));
    worker.import(3);
    EXPECT_TRUE(fs::exists(onlyFile()));
    EXPECT_TRUE(worker.told.empty());
}

TEST_F(Recovery, OfASurveyThatIsSavedGoesUntilItIsChangedOrExported) {
    Worker worker(place());
    worker.work(4, 5);
    for (const bool exported : {false, true}) {
        worker.keeper.setAside();
        EXPECT_TRUE(fs::is_empty(place()));
        if (exported) {
            worker.records.exports.resize(1);
            worker.keeper.follow(worker.journal, worker.records);
        } else {
            worker.import(3);
        }
        EXPECT_TRUE(fs::exists(onlyFile()));
    }
}

TEST_F(Recovery, OfALargeSurveyThatIsSavedIsSetAsideAndGoesOnWithTheNextChange) {
    Worker worker(place());
    worker.import(kManySites);
    const std::string path = onlyFile();
    const auto written = [&](auto change) {
        worker.keeper.setAside();
        EXPECT_FALSE(fs::exists(path));
        EXPECT_TRUE(findLeftWork(place()).empty());
        const WatchedFileCalls watched;
        change();
        EXPECT_EQ(onlyFile(), path);
        EXPECT_EQ(watched.calls().back().name, "fsync") << "its name is on the disk";
        EXPECT_EQ(watched.count("fsync"), 2) << "and before it had that, what was appended";
        std::size_t bytes = 0;
        for (const FileCall& call : watched.calls())
            bytes += call.bytes.size();
        return bytes;
    };
    EXPECT_LT(written([&] { worker.journal.goTo(0); }), 100U) << "not all of it is written again";
    EXPECT_LT(written([&] { worker.import(3); }), 20'000U);
    worker.keeper.setAside();
    worker.journal.recount([](const Survey&, SurveyCounts& counts) { counts.MaxX = 7; });
    EXPECT_FALSE(fs::exists(path)) << "what is counted is no change";
    worker.records.imports.resize(1);
    worker.keeper.follow(worker.journal, worker.records);
    const std::uint64_t expected = digestOf(worker.journal, worker.records);
    fs::copy(path, folder / "copy");
    worker.keeper.discard();
    EXPECT_TRUE(fs::is_empty(place()));
    fs::copy(folder / "copy", path);
    const SavedWork work = recovered();
    EXPECT_EQ(digestOf(work.journal, work.records), expected);
}

TEST_F(Recovery, ThatIsSetAsideGoesWithItsProgramOrAtTheNextStart) {
    {
        Worker worker(place());
        worker.import(kManySites);
        worker.keeper.setAside();
        EXPECT_TRUE(findLeftWork(place()).empty());
        EXPECT_FALSE(fs::is_empty(place())) << "its program lives";
    }
    EXPECT_TRUE(fs::is_empty(place()));
    writeFile(place() + "/aside-1-0", "of a program that was killed");
    EXPECT_TRUE(findLeftWork(place()).empty());
    EXPECT_TRUE(fs::is_empty(place()));
}

TEST_F(Recovery, ThatWouldBeSmallerAnewIsNotSetAside) {
    Worker worker(place());
    worker.import(kManySites);
    const auto first = fs::file_size(onlyFile());
    while (fs::file_size(onlyFile()) <= 2 * first)
        worker.import(kManySites);
    worker.keeper.setAside();
    EXPECT_TRUE(fs::is_empty(place()));
}

TEST_F(Recovery, DoesNotGrowForEver) {
    Worker worker(place());
    worker.import(3);
    const auto whole = fs::file_size(onlyFile());
    std::uintmax_t largest = 0;
    for (int i = 0; i < 3000; ++i) {
        worker.journal.goTo(i % 2 == 0 ? 0 : 1);
        largest = std::max(largest, fs::file_size(onlyFile()));
    }
    EXPECT_GT(largest, 2 * whole);
    EXPECT_LT(largest, 50'000U);
}

TEST_F(Recovery, NeverTakesTheNameOfAnothersFile) {
    Worker worker(place());
    worker.import(kManySites);
    const std::string path = onlyFile();
    worker.keeper.setAside();
    writeFile(path, "another's");
    worker.import(3);
    EXPECT_EQ(readFile(path), "another's");
    EXPECT_TRUE(worker.keeper.isKeeping());
    fs::remove(path);
    EXPECT_EQ(onlyFile().find(place() + "/recovery-"), 0U) << "the change is kept in a file of its own";
}

TEST_F(Recovery, WithoutALockIsNotKept) {
    Worker worker(place());
    const WatchedFileCalls watched(failing("flock", ENOLCK));
    worker.import(3);
    ASSERT_EQ(worker.told.size(), 1U);
    EXPECT_NE(worker.told[0].find("No locks available"), std::string::npos);
    EXPECT_TRUE(fs::is_empty(place()));
}

TEST_F(Recovery, ThatWasSetAsideMakesRoomForTheNext) {
    Worker worker(place());
    worker.import(kManySites);
    const std::string path = onlyFile();
    worker.keeper.setAside();
    writeFile(path, "another's");
    const WatchedFileCalls watched([&](const FileCall& call) -> std::optional<FileAnswer> {
        if (call.name != "fstatvfs") return std::nullopt;
        const bool isThere = fs::exists(place() + "/aside" + path.substr((place() + "/recovery").size()));
        return FileAnswer{0, 0, isThere ? 1 : 1'000'000};
    });
    worker.import(3);
    EXPECT_TRUE(worker.keeper.isKeeping());
}

TEST_F(Recovery, IsLookedAtNoFurtherThanItsBeginningUntilItIsRead) {
    {
        Worker worker(place());
        worker.import(200'000);
        worker.import(200'000);
    }
    const WatchedFileCalls watched;
    const auto left = findLeftWork(place());
    ASSERT_EQ(left.size(), 1U);
    const long looked = watched.count("pread");
    EXPECT_GT(looked, 2);
    left.front().read();
    EXPECT_GT(watched.count("pread") - looked, looked);
}

TEST_F(Recovery, OfZerosIsNoEndlessRowOfFrames) {
    fs::create_directories(place());
    writeFile(place() + "/recovery-1-0", "VARN-Tessel recovery 1\n");
    fs::resize_file(place() + "/recovery-1-0", std::uintmax_t{100} << 30);
    const auto left = findLeftWork(place());
    ASSERT_EQ(left.size(), 1U);
    EXPECT_NE(descriptionOf([&] { left.front().read(); }), "no error");
}

TEST_F(Recovery, ForgetsTheOldestActsAboveWhatMayBeKept) {
    constexpr int kActs = 200;
    constexpr std::size_t kRoomForActs = 100'000;
    Survey last;
    {
        Worker worker(place());
        for (int i = 0; i < kActs; ++i)
            worker.import(300);
        worker.journal.goTo(worker.journal.size() - 1);
        last = worker.journal.survey();
    }
    const SavedWork work = recovered(kRoomForActs);
    EXPECT_LE(work.journal.bytes(), kRoomForActs);
    EXPECT_GT(work.journal.size(), 2U);
    EXPECT_EQ(work.journal.forgotten() + work.journal.size(), static_cast<std::size_t>(kActs));
    EXPECT_EQ(work.journal.actsInForce(), static_cast<std::size_t>(kActs - 1));
    EXPECT_EQ(differences(work.journal.survey(), last), "");
}

TEST_F(Recovery, ForgetsNothingToWhichAWayBackLeads) {
    std::uint64_t expected = 0;
    {
        Worker worker(place());
        for (int i = 0; i < 50; ++i)
            worker.import(300 + i);
        worker.journal.goTo(3);
        worker.import(2);
        expected = digestOf(worker.journal);
    }
    bool isAll = false;
    EXPECT_EQ(digestOf(recovered(100'000, &isAll).journal), expected);
    EXPECT_TRUE(isAll);
}

TEST_F(Recovery, TakesNoRecordsThatCannotBe) {
    Worker worker(place());
    worker.work(4, 5);
    const std::uint64_t before = digestOf(worker.journal, worker.records);
    SavedRecords records = worker.records;
    records.exports.resize(1);
    records.exports[0].importNumber = -1;
    worker.keeper.follow(worker.journal, records);
    const std::string path = onlyFile(), whole = readFile(path);
    worker.keeper.discard();
    writeFile(path, whole);
    bool isAll = true;
    const SavedWork work = recovered(SIZE_MAX, &isAll);
    EXPECT_EQ(digestOf(work.journal), before) << "the file ends in front of them";
    EXPECT_FALSE(isAll);
}

TEST_F(Recovery, HasANameThatSurvivesAPowerCut) {
    Worker worker(place());
    const WatchedFileCalls watched;
    worker.import(3);
    EXPECT_EQ(watched.count("fsync"), 2) << "the file, and the folder that has its name";
    EXPECT_EQ(watched.calls().back().name, "fsync");
    EXPECT_EQ(watched.calls()[watched.calls().size() - 2].path, place());
}

TEST_F(Recovery, DoesNotFillADiskThatIsFull) {
    Worker worker(place());
    long freeBlocks = 1;
    const auto answer = [&](const FileCall& call) -> std::optional<FileAnswer> {
        return call.name == "fstatvfs" ? std::optional(FileAnswer{0, 0, freeBlocks}) : std::nullopt;
    };
    {
        const WatchedFileCalls watched(answer);
        worker.import(1000);
        worker.import(1000);
        EXPECT_EQ(watched.count("write"), 0);
        ASSERT_EQ(worker.told.size(), 1U);
        EXPECT_NE(worker.told[0].find("No space left on device"), std::string::npos);
    }
    EXPECT_TRUE(fs::is_empty(place()));
    freeBlocks = 1000;
    const WatchedFileCalls watched(answer);
    worker.import(1000);
    EXPECT_TRUE(worker.keeper.isKeeping());
}

TEST_F(Recovery, OfAUserWithoutAHomeIsNotKept) {
    Worker worker("");
    worker.work(4, 5);
    EXPECT_FALSE(worker.keeper.isKeeping());
    EXPECT_TRUE(worker.told.empty());
}

TEST_F(Recovery, OfAFullDiskIsToldOnceAndWrittenAnewWhenThereIsRoom) {
    Worker worker(place());
    worker.work(6, 8);
    const std::uint64_t before = digestOf(worker.journal);
    const std::string kept = readFile(onlyFile());
    {
        const WatchedFileCalls watched([writes = 0](const FileCall& call) mutable {
            const bool isFull = call.name == "write" && ++writes > 1;
            return isFull ? std::optional(FileAnswer{-1, ENOSPC}) : std::nullopt;
        });
        worker.import(3);
        worker.import(4);
    }
    ASSERT_EQ(worker.told.size(), 1U);
    EXPECT_NE(worker.told[0].find("cannot be written: No space left on device"), std::string::npos);
    EXPECT_EQ(readFile(onlyFile()), kept) << "nothing half behind it";
    fs::copy(onlyFile(), folder / "copy");
    worker.import(5);
    EXPECT_EQ(worker.told, (std::vector<std::string>{worker.told[0], ""}));
    const std::string path = onlyFile(), whole = readFile(path);
    const std::uint64_t after = digestOf(worker.journal);
    worker.keeper.discard();
    writeFile(path, whole);
    EXPECT_EQ(digestOf(recovered().journal), after);
    writeFile(path, readFile(folder / "copy"));
    EXPECT_EQ(digestOf(recovered().journal), before) << "what was whole stays";
}

TEST_F(Recovery, SyncsEveryActAndWritesNoMoreThanItsDifference) {
    constexpr SiteIndex kSites = 50'000;
    Worker worker(place());
    worker.import(kSites);
    for (const SiteIndex first : {10, 40'000}) {
        const WatchedFileCalls watched;
        worker.journal.perform({}, [&](Survey& survey) {
            Difference difference(survey);
            const auto room = static_cast<std::size_t>(survey.SiteData.capacity());
            difference.exchangeColumn(survey, kEM1, std::vector<double>(room, double(first)));
            return difference;
        });
        std::size_t written = 0;
        for (const FileCall& call : watched.calls())
            written += call.bytes.size();
        EXPECT_LE(written, worker.journal.act(worker.journal.size() - 1).difference.bytes() + 5000);
        EXPECT_EQ(watched.calls().back().name, "fsync");
    }
    const WatchedFileCalls watched;
    worker.journal.recount([](const Survey&, SurveyCounts& counts) { counts.MaxX = 1; });
    EXPECT_EQ(watched.count("fsync"), 0) << "what is counted anew is found again";
}

}  // namespace tessel
