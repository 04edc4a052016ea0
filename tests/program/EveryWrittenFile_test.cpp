// SPDX-License-Identifier: GPL-3.0-or-later
// What holds for every file that the program writes, whatever fails while it is written: it is the old one or
// the new one, whole, the user is told which, and nothing else is left.
#include "support/WrittenFiles.h"
#include "support/file_calls.h"
#include "support/temporary_folder.h"

#include <sys/wait.h>

namespace tessel {

namespace {

using Answer = std::optional<FileAnswer>;

class EveryWrittenFile : public WrittenFileTest {
  protected:
    // What a call is answered with: the number of it, and of the faulty one, from 1.
    using Fault = std::function<Answer(const FileCall& call, long number, long faulty)>;
    // Writes again and again with the fault at the first call, at the second, and so on.
    void expectOldOrNewAtEveryCall(const Fault& fault, const std::string& reason);
    // What is told then; nothing when there were not so many calls.
    std::optional<std::string> toldWith(const Fault& fault, long faulty, bool nameless);
    void expectOldOrNew(const std::string& told, const std::string& reason);
};

bool isAppended(const KindOfFile& kind) {
    return std::string_view(kind.name) == "RecoveryFile";
}

bool isWriting(const FileCall& call) {
    return call.name == "write" || call.name == "pwrite";
}

Answer onceAtCall(int error, long number, long faulty) {
    return number == faulty ? Answer(FileAnswer{-1, error}) : std::nullopt;
}

std::optional<std::string> EveryWrittenFile::toldWith(const Fault& fault, long faulty, bool nameless) {
    file->makeOld(path);
    long calls = 0, faults = 0;
    const WatchedFileCalls watched([&](const FileCall& call) -> Answer {
        if (!nameless && noNamelessFiles(call)) return noNamelessFiles(call);
        const Answer answer = fault(call, ++calls, faulty);
        faults += answer.has_value();
        return answer;
    });
    const std::string told = file->write(path);
    return faults > 0 ? std::optional(told) : std::nullopt;
}

void EveryWrittenFile::expectOldOrNew(const std::string& told, const std::string& reason) {
    EXPECT_TRUE(isInPlace(told) || told == path + " cannot be written: " + reason) << told;
    // What is written behind an old text may be there although it is perhaps not on the disk.
    const bool mayBeNew = isInPlace(told) || isAppended(GetParam());
    EXPECT_TRUE((state() == "new" && mayBeNew) || (state() == "old" && !isInPlace(told))) << state() << told;
    EXPECT_EQ(filesIn(folder), 1U) << told;
}

void EveryWrittenFile::expectOldOrNewAtEveryCall(const Fault& fault, const std::string& reason) {
    for (const bool nameless : {true, false}) {
        int refused = 0;
        for (long faulty = 1; !HasFailure(); ++faulty) {
            SCOPED_TRACE(testing::Message() << faulty << (nameless ? "" : " without nameless files"));
            const auto told = toldWith(fault, faulty, nameless);
            if (!told) break;
            expectOldOrNew(*told, reason);
            refused += !isInPlace(*told);
        }
        EXPECT_GE(refused, 1);
        EXPECT_EQ(state(), "new");
    }
}

}  // namespace

TEST_P(EveryWrittenFile, IsTheOldOneOrTheNewOneWhicheverCallFails) {
    expectOldOrNewAtEveryCall(
        [](const FileCall&, long number, long faulty) { return onceAtCall(EIO, number, faulty); },
        "Input/output error");
}

TEST_P(EveryWrittenFile, IsTheOldOneOrTheNewOneWheneverItsDriveGoes) {
    expectOldOrNewAtEveryCall(
        [](const FileCall&, long number, long faulty) {
            return number >= faulty ? Answer(FileAnswer{-1, ENOTCONN}) : std::nullopt;
        },
        "Transport endpoint is not connected");
}

TEST_P(EveryWrittenFile, IsTheOldOneWhereTheDiskOrTheUsersShareOfItIsFull) {
    struct Full {
        FileAnswer answer;
        const char* reason;
    };
    for (const auto& [answer, reason] :
         {Full{{-1, ENOSPC}, "No space left on device"}, Full{{0, 0}, "No space left on device"},
          Full{{-1, EDQUOT}, "Disk quota exceeded"}, Full{{-1, EFBIG}, "File too large"}}) {
        long writings = 0;
        expectOldOrNewAtEveryCall(
            [&, full = answer](const FileCall& call, long number, long faulty) -> Answer {
                if (number == 1) writings = 0;
                return isWriting(call) && ++writings == faulty ? Answer(full) : std::nullopt;
            },
            reason);
    }
}

TEST_P(EveryWrittenFile, IsWholeThoughASignalInterruptsEveryCall) {
    for (const bool nameless : {true, false}) {
        file->makeOld(path);
        bool isInterrupted = false;
        const WatchedFileCalls watched([&](const FileCall& call) -> Answer {
            if (!nameless && noNamelessFiles(call)) return noNamelessFiles(call);
            if (call.name == "close") return std::nullopt;  // done all the same
            isInterrupted = !isInterrupted;
            return isInterrupted ? Answer(FileAnswer{-1, EINTR}) : std::nullopt;
        });
        EXPECT_EQ(file->write(path), "");
        EXPECT_FALSE(isInterrupted);
        EXPECT_GE(watched.calls().size(), 4U);
    }
    EXPECT_EQ(state(), "new");
}

TEST_P(EveryWrittenFile, IsWholeThoughEveryWritingIsTakenInPart) {
    long parts = 0;
    {
        const WatchedFileCalls watched([&](const FileCall& call) -> Answer {
            if (!isWriting(call) || call.bytes.size() < 2) return std::nullopt;
            ++parts;
            const std::size_t part = call.bytes.size() / 2;
            const ssize_t taken = call.name == "write"
                                      ? ::write(call.file, call.bytes.data(), part)
                                      : ::pwrite(call.file, call.bytes.data(), part, call.at);
            return FileAnswer{taken, 0};
        });
        EXPECT_EQ(file->write(path), "");
    }
    EXPECT_GE(parts, 10);
    EXPECT_EQ(state(), "new");
}

TEST_P(EveryWrittenFile, IsOnTheDiskBeforeItTakesTheOldOnesPlace) {
    std::string order;
    {
        const WatchedFileCalls watched;
        EXPECT_EQ(file->write(path), "");
        for (const FileCall& call : watched.calls()) {
            const std::string word = isWriting(call) ? "write" : call.name;
            const bool counts = word == "write" || word == "fsync" || word == "rename";
            if (counts && !order.ends_with(word + ' ')) order += word + ' ';
        }
    }
    EXPECT_EQ(order, isAppended(GetParam()) ? "write fsync " : "write fsync rename fsync ");
}

namespace {

// Another program writes the file, and is killed at its call number `last`, if there are so many; then true.
bool killsAWriter(FileToWrite& file, const std::string& path, long last, bool nameless) {
    const pid_t program = ::fork();
    if (program == 0) {
        long calls = 0;
        const WatchedFileCalls watched([&](const FileCall& call) -> Answer {
            if (++calls == last) ::kill(::getpid(), SIGKILL);
            return nameless ? std::nullopt : noNamelessFiles(call);
        });
        file.write(path);
        std::_Exit(0);
    }
    int end = 0;
    EXPECT_EQ(::waitpid(program, &end, 0), program);
    return WIFSIGNALED(end);
}

}  // namespace

TEST_P(EveryWrittenFile, IsTheOldOneOrTheNewOneWheneverTheProgramIsKilled) {
    for (const bool nameless : {true, false}) {
        std::set<std::string> states;
        for (long last = 1; killsAWriter(*file, path, last, nameless); ++last) {
            SCOPED_TRACE(testing::Message() << last << (nameless ? "" : " without nameless files"));
            states.insert(state());
            ASSERT_LE(filesIn(folder), 2U);
            file->makeOld(path);
            ASSERT_EQ(file->write(path), "");
            ASSERT_EQ(filesIn(folder), 1U) << "what was left goes when something is written next";
            file->makeOld(path);
        }
        EXPECT_EQ(states, (std::set<std::string>{"new", "old"}));
        file->makeOld(path);
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, EveryWrittenFile, testing::ValuesIn(allWrittenFiles()),
                         [](const auto& kind) { return kind.param.name; });

}  // namespace tessel
