// SPDX-License-Identifier: GPL-3.0-or-later
// What FileReplacement asks of the system, and in which order: the old file or the new one is there, whole,
// whenever the power goes.
#include "base/file_replacement.h"
#include "support/file_calls.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

using Calls = std::vector<FileCall>;
using Answer = std::optional<FileAnswer>;

const std::string kNew(300'000, 'n');  // more than is written at once

void replace(const std::string& path, const std::string& text = kNew) {
    FileReplacement file(path);
    for (std::size_t at = 0; at < text.size(); at += 10'000)
        file.write(std::string_view(text).substr(at, 10'000));
    file.commit();
}

// The calls that change something, with the names of the files in the folder.
std::vector<std::string> inWords(const Calls& calls, const TemporaryFolder& folder) {
    std::map<int, std::string> opened;
    const auto shortened = [&](const std::string& path) {
        if (path == folder.path()) return std::string("folder");
        if (path.find("/.tessel-") != std::string::npos) return std::string("unfinished");
        return path.starts_with(folder.path()) ? path.substr(folder.path().size() + 1) : "file";
    };
    std::vector<std::string> words;
    for (const FileCall& call : calls) {
        if (call.name == "open" && call.file >= 0)
            opened[call.file] = (call.flags & O_ACCMODE) == O_RDWR ? "file" : "folder";
        else if (!call.to.empty())
            words.push_back(call.name + ' ' + shortened(call.path) + " to " + shortened(call.to));
        else if (call.name == "write" || call.name == "fsync" || call.name == "syncfs")
            words.push_back(call.name + ' ' + opened[call.file]);
    }
    return words;
}

// A disk that keeps what has been synced, and of the rest as much as it has come to: of each file's bytes any
// first part, and of the changes of names any first ones.
class Disk {
  public:
    explicit Disk(const std::string& old) { names_.push_back({{"target", old}}); }

    void make(const FileCall& call) {
        if (call.name == "open" && (call.flags & O_ACCMODE) == O_RDWR) {
            file_ = call.file;
            if ((call.flags & O_CREAT) != 0) change([](Names& names) { names["unfinished"].reset(); });
        } else if (call.name == "write") {
            text_ += call.bytes.substr(0, static_cast<std::size_t>(call.result));
        } else if (call.name == "linkat") {
            change([](Names& names) { names["unfinished"].reset(); });
        } else if (call.name == "rename") {
            change([](Names& names) {
                names["target"].reset();
                names.erase("unfinished");
            });
        } else if (call.name == "fsync" && call.file == file_) {
            syncedText_ = text_.size();
        } else if (call.name == "fsync" || call.name == "syncfs") {
            names_.erase(names_.begin(), names_.end() - 1);
        }
    }

    // What may stand under the target's name when the power goes now, by length; "new" when it is whole.
    std::set<std::string> afterPowerCut() const {
        std::set<std::string> found;
        for (const Names& names : names_) {
            const auto& target = names.at("target");
            if (target) {
                found.insert(*target);
                continue;
            }
            for (const std::size_t length : {syncedText_, (syncedText_ + text_.size()) / 2, text_.size()})
                found.insert(text_.substr(0, length) == kNew ? "new" : "torn");
        }
        return found;
    }

  private:
    // A name's old text, or nothing for the file that is being written.
    using Names = std::map<std::string, std::optional<std::string>>;
    template <typename Change>
    void change(Change act) {
        Names names = names_.back();
        act(names);
        names_.push_back(names);
    }

    std::vector<Names> names_;  // as synced, and after each change since
    int file_ = -1;
    std::string text_;
    std::size_t syncedText_ = 0;
};

// What may be left when the power goes after each of the calls.
std::vector<std::set<std::string>> outcomes(const Calls& calls) {
    Disk disk("old");
    std::vector<std::set<std::string>> found{disk.afterPowerCut()};
    for (const FileCall& call : calls) {
        disk.make(call);
        found.push_back(disk.afterPowerCut());
    }
    return found;
}

Calls callsOfAReplacement(const WatchedFileCalls::Answerer& answerer = {}) {
    const TemporaryFolder folder;
    writeFile(folder / "out.txt", "old");
    const WatchedFileCalls watched(answerer);
    replace(folder / "out.txt");
    return watched.calls();
}

// The calls without the nth (from 1) of this name.
Calls without(Calls calls, const std::string& name, int nth) {
    for (auto call = calls.begin(); call != calls.end(); ++call) {
        if (call->name != name || --nth > 0) continue;
        calls.erase(call);
        break;
    }
    return calls;
}

using DurableWriting = FolderTest;

}  // namespace

TEST_F(DurableWriting, SyncsTheFileBeforeItHasItsNameAndTheFolderAfterwards) {
    writeFile(path, "old");
    std::vector<std::string> expected{"write file",
                                      "write file",
                                      "fsync file",
                                      "linkat file to unfinished",
                                      "rename unfinished to out.txt",
                                      "fsync folder"};
    for (const bool nameless : {true, false}) {
        const WatchedFileCalls watched(nameless ? WatchedFileCalls::Answerer() : noNamelessFiles);
        replace(path);
        if (!nameless) std::erase(expected, "linkat file to unfinished");
        EXPECT_EQ(inWords(watched.calls(), folder), expected) << nameless;
    }
}

TEST_F(DurableWriting, LeavesTheOldOrTheNewFileWheneverThePowerGoes) {
    for (const auto& answerer : {WatchedFileCalls::Answerer(), WatchedFileCalls::Answerer(noNamelessFiles)}) {
        const auto found = outcomes(callsOfAReplacement(answerer));
        ASSERT_GT(found.size(), 6U);
        for (const auto& outcome : found)
            EXPECT_EQ(outcome.count("torn"), 0U);
        EXPECT_EQ(found.front(), std::set<std::string>{"old"});
        EXPECT_EQ(found.back(), std::set<std::string>{"new"});
    }
}

TEST_F(DurableWriting, WouldLeaveATornOrTheOldFileWithoutItsSyncs) {
    const Calls calls = callsOfAReplacement();
    bool torn = false;
    for (const auto& outcome : outcomes(without(calls, "fsync", 1)))
        torn = torn || outcome.count("torn") != 0;
    EXPECT_TRUE(torn);
    EXPECT_EQ(outcomes(without(calls, "fsync", 2)).back(), (std::set<std::string>{"new", "old"}));
}

TEST_F(DurableWriting, MakesEveryCallAgainThatASignalInterrupts) {
    const auto interrupted = [&](bool nameless) {
        std::set<std::string> names;
        const WatchedFileCalls watched([&, again = false](const FileCall& call) mutable -> Answer {
            if (!nameless && noNamelessFiles(call)) return noNamelessFiles(call);
            if (call.name == "close") return std::nullopt;  // done all the same
            again = !again;
            if (!again) return std::nullopt;
            names.insert(call.name);
            return FileAnswer{-1, EINTR};
        });
        replace(path);
        EXPECT_EQ(readFile(path), kNew);
        return names;
    };
    std::set<std::string> all{"open", "flock", "stat", "write", "fsync", "rename"};
    writeFile(path, "old");
    EXPECT_EQ(interrupted(false), all);
    all.insert("linkat");
    EXPECT_EQ(interrupted(true), all);
    // And where it is written in place.
    writeFile(path, std::string(400'000, 'o'));
    ASSERT_EQ(::link(path.c_str(), (folder / "second.txt").c_str()), 0);
    EXPECT_EQ(interrupted(true), (std::set<std::string>{"open", "flock", "stat", "write", "fallocate",
                                                        "pread", "pwrite", "ftruncate", "fsync"}));
    EXPECT_EQ(readFile(folder / "second.txt"), kNew);
}

TEST_F(DurableWriting, LeavesTheOldFileWhicheverCallFails) {
    writeFile(path, "old");
    for (const char* name : {"stat", "open", "write", "fsync", "linkat", "close", "rename"}) {
        std::string description;
        {
            const WatchedFileCalls watched(failing(name, EIO));
            description = descriptionOf([&] { replace(path); });
        }
        EXPECT_EQ(description, path + " cannot be written: Input/output error") << name;
        EXPECT_EQ(readFile(path), "old") << name;
        EXPECT_EQ(filesIn(folder), 1U) << name;
    }
}

TEST_F(DurableWriting, SaysSoWhenTheFolderCannotBeSynced) {
    const auto answered = [&](int error) {
        int syncs = 0;
        const WatchedFileCalls watched([&](const FileCall& call) -> Answer {
            return call.name == "fsync" && ++syncs == 2 ? Answer(FileAnswer{-1, error}) : std::nullopt;
        });
        return descriptionOf([&] { replace(path); });
    };
    EXPECT_EQ(answered(EIO), folder /
                                 "out.txt has been written, but a power cut may bring the old file back: "
                                 "Input/output error");
    EXPECT_EQ(readFile(path), kNew);
    for (const int unable : {EINVAL, EOPNOTSUPP})  // a file system that cannot
        EXPECT_EQ(answered(unable), "no error") << unable;
}

TEST_F(DurableWriting, SyncsTheFileSystemWhereTheFolderMayNotBeRead) {
    const WatchedFileCalls watched([&](const FileCall& call) -> Answer {
        const bool isFolder = call.name == "open" && (call.flags & O_ACCMODE) == O_RDONLY;
        return isFolder ? Answer(FileAnswer{-1, EACCES}) : std::nullopt;
    });
    replace(path);
    EXPECT_EQ(watched.calls().back().name, "syncfs");
    EXPECT_EQ(watched.calls().back().result, 0);
}

}  // namespace tessel
