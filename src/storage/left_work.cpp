// SPDX-License-Identifier: GPL-3.0-or-later
// Recovery files that programs have left behind.
#include "base/file_system.h"
#include "base/run_time_error.h"
#include "storage/recovery_file.h"
#include "storage/recovery_format.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <unistd.h>
#include <utility>

namespace tessel {

namespace {

namespace fs = std::filesystem;
using namespace recovery_format;

// Reads from a place of a file on, and tells its end from what cannot be read.
class Bytes {
  public:
    // `reason` becomes the value of errno when something cannot be read.
    Bytes(int file, off_t at, int& reason) : file_(file), at_(at), reason_(reason) {}

    bool read(char* to, std::size_t count) {
        for (std::size_t got = 0; got < count;) {
            const ssize_t part = uninterrupted(
                [&] { return ::pread(file_, to + got, count - got, at_ + static_cast<off_t>(got)); });
            if (part == 0) hasEnded_ = true;
            if (part < 0) reason_ = errno;
            if (part <= 0) return false;
            got += static_cast<std::size_t>(part);
        }
        at_ += static_cast<off_t>(count);
        return true;
    }
    // Goes on behind so many bytes.
    bool pass(std::size_t count) {
        char last = 0;
        if (count > 0) at_ += static_cast<off_t>(count) - 1;
        return count == 0 || read(&last, 1);
    }
    off_t place() const { return at_; }
    bool hasEnded() const { return hasEnded_; }

  private:
    int file_;
    off_t at_;
    int& reason_;
    bool hasEnded_ = false;
};

struct FrameHead {
    std::uint32_t size = 0;
    std::uint8_t kind = 0;
    bool isLast = false;
    std::uint64_t checksum = 0;
};

// False where the file ends, or where no frame can begin.
bool readHead(Bytes& bytes, FrameHead& head) {
    std::array<char, kFrameHead> stored{};
    if (!bytes.read(stored.data(), stored.size())) return false;
    ByteReader in(std::string_view(stored.data(), stored.size()));
    head.size = in.number<std::uint32_t>();
    head.kind = in.number<std::uint8_t>();
    const auto isLast = in.number<std::uint8_t>();
    head.isLast = isLast == 1;
    head.checksum = in.number<std::uint64_t>();
    return head.kind != 0 && head.size <= kPieceSize && isLast <= 1 && (head.size > 0 || head.isLast);
}

struct Frame : FrameHead {
    std::string piece;
};

// False where the file ends, or stops being whole.
bool readFrame(Bytes& bytes, Frame& frame) {
    if (!readHead(bytes, frame)) return false;
    frame.piece.resize(frame.size);
    return bytes.read(frame.piece.data(), frame.size) &&
           frameChecksum(frame.kind, frame.piece, frame.isLast) == frame.checksum;
}

struct Record {
    std::uint8_t kind = 0;
    off_t begin = 0;
    std::uint64_t size = 0;  // of all its pieces
};

// The next record, looked through to its end; nothing where none is whole any more.
std::optional<Record> nextRecord(Bytes& bytes) {
    Record record{0, bytes.place(), 0};
    Frame frame;
    do {
        if (!readFrame(bytes, frame) || (record.kind != 0 && frame.kind != record.kind)) return std::nullopt;
        record.kind = frame.kind;
        record.size += frame.piece.size();
    } while (!frame.isLast);
    return record;
}

bool hasSignature(Bytes& bytes) {
    std::string begin(kSignature.size(), '\0');
    return bytes.read(begin.data(), begin.size()) && begin == kSignature;
}

void takeRecord(int file, const Record& record, int& reason, SavedWork& work) {
    Bytes bytes(file, record.begin, reason);
    Frame frame;
    ByteReader in(record.size, [&]() -> std::string_view {
        return readFrame(bytes, frame) ? std::string_view(frame.piece) : std::string_view();
    });
    readRecord(record.kind, in, work);
}

enum class LeftFile {
    kWork,   ///< or work that is damaged, of which the user is told when it is to be reopened
    kTorn,   ///< its program was ended before there was anything whole in it
    kOthers  ///< of another version, or not to be read now
};

// Whether a record ends in the file, whose frames are passed over.
LeftFile look(int file) {
    int reason = 0;
    Bytes bytes(file, 0, reason);
    if (!hasSignature(bytes)) return bytes.hasEnded() ? LeftFile::kTorn : LeftFile::kOthers;
    FrameHead head;
    do {
        if (!readHead(bytes, head) || !bytes.pass(head.size))
            return bytes.hasEnded() ? LeftFile::kTorn : LeftFile::kWork;
    } while (!head.isLast);
    return LeftFile::kWork;
}

std::vector<std::string> pathsIn(const std::string& folder, const char* nameBegins) {
    std::vector<std::pair<fs::file_time_type, std::string>> found;
    for (const std::string& name : namesIn(folder)) {
        std::error_code ignored;
        const std::string path = pathIn(folder, name);
        if (name.starts_with(nameBegins)) found.emplace_back(fs::last_write_time(path, ignored), path);
    }
    std::sort(found.rbegin(), found.rend());
    std::vector<std::string> paths;
    paths.reserve(found.size());
    for (auto& [time, path] : found)
        paths.push_back(std::move(path));
    return paths;
}

}  // namespace

LeftWork::LeftWork(LeftWork&& other) noexcept
    : path_(std::move(other.path_)), file_(std::exchange(other.file_, -1)) {}

LeftWork::~LeftWork() {
    if (file_ >= 0) ::close(file_);
}

// When somebody has taken it away its name may be another's.
void LeftWork::remove() {
    if (isStillNamed(file_, path_)) ::unlink(path_.c_str());
}

// False where a record says what cannot be.
bool LeftWork::replay(SavedWork& work) const {
    int reason = 0;
    Bytes bytes(file_, 0, reason);
    const auto require = [&](bool isSo, const std::string& why) {
        if (reason != 0) throw RunTimeError::file(path_, "cannot be read", reason);
        if (!isSo) throw RunTimeError::file(path_, "cannot be read", why);
    };
    require(hasSignature(bytes), "it is no recovery file");
    bool isAny = false;
    try {
        while (const auto record = nextRecord(bytes)) {
            if (!isAny && record->kind != kWork) break;
            takeRecord(file_, *record, reason, work);
            isAny = true;
        }
    } catch (const DamagedBytes& damage) {
        require(isAny, damage.what());
        return false;
    }
    require(isAny, "nothing in it is whole");
    return true;
}

SavedWork LeftWork::read(std::size_t mostBytes, bool* isAll) const {
    SavedWork work{Journal(mostBytes), {}};
    bool isDone = replay(work);
    // Written where more could be kept in memory, perhaps.
    if (!isDone && work.journal.forgotten() > 0) {
        work = SavedWork();
        isDone = replay(work);
    }
    if (isAll) *isAll = isDone;
    return work;
}

std::deque<LeftWork> findLeftWork(const std::string& folder) {
    std::deque<LeftWork> left;
    if (folder.empty()) return left;
    for (const std::string& path : pathsIn(folder, kAsideNameBegins))
        if (const int file = openLeftFile(path); file >= 0) LeftWork(path, file).remove();
    for (const std::string& path : pathsIn(folder, kNameBegins)) {
        const int file = openLeftFile(path);
        if (file < 0) continue;
        LeftWork work(path, file);
        const LeftFile found = look(file);
        if (found == LeftFile::kTorn)
            work.remove();
        else if (found == LeftFile::kWork)
            left.push_back(std::move(work));
    }
    return left;
}

}  // namespace tessel
