// SPDX-License-Identifier: GPL-3.0-or-later
// Recovery files that programs have left behind.
#include "base/run_time_error.h"
#include "base/unfinished_file.h"
#include "storage/recovery_file.h"
#include "storage/recovery_format.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tessel {

namespace {

namespace fs = std::filesystem;
using namespace recovery_format;

// Reads from a place of a file on, and tells its end from what cannot be read.
class Bytes {
  public:
    explicit Bytes(int file, off_t at = 0) : file_(file), at_(at) {}

    bool read(char* to, std::size_t count) {
        for (std::size_t got = 0; got < count;) {
            const ssize_t part = uninterrupted(
                [&] { return ::pread(file_, to + got, count - got, at_ + static_cast<off_t>(got)); });
            if (part == 0) hasEnded_ = true;
            if (part <= 0) return false;
            got += static_cast<std::size_t>(part);
        }
        at_ += static_cast<off_t>(count);
        return true;
    }
    off_t place() const { return at_; }
    bool hasEnded() const { return hasEnded_; }

  private:
    int file_;
    off_t at_;
    bool hasEnded_ = false;
};

struct Frame {
    std::uint8_t kind = 0;
    bool isLast = false;
    std::string piece;
};

// False where the file ends, or stops being whole.
bool readFrame(Bytes& bytes, Frame& frame) {
    std::string head(kFrameHead, '\0');
    if (!bytes.read(head.data(), head.size())) return false;
    ByteReader in(head);
    const auto size = in.number<std::uint32_t>();
    frame.kind = in.number<std::uint8_t>();
    const auto isLast = in.number<std::uint8_t>();
    const auto checksum = in.number<std::uint64_t>();
    if (size > kPieceSize || isLast > 1) return false;
    frame.isLast = isLast == 1;
    frame.piece.resize(size);
    return bytes.read(frame.piece.data(), size) &&
           checksumOf(frame.piece) + frame.kind + std::uint64_t{256} * isLast == checksum;
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

void takeRecord(int file, const Record& record, SavedWork& work) {
    Bytes bytes(file, record.begin);
    Frame frame;
    ByteReader in(record.size, [&]() -> std::string_view {
        return readFrame(bytes, frame) ? std::string_view(frame.piece) : std::string_view();
    });
    readRecord(record.kind, in, work);
}

// Opened and locked, unless a living program holds it; -1 then.
int take(const std::string& path) {
    const int flags = O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const int file = uninterrupted([&] { return ::open(path.c_str(), flags); });
    if (file < 0) return -1;
    if (uninterrupted([&] { return ::flock(file, LOCK_EX | LOCK_NB); }) == 0 && isStillNamed(file, path))
        return file;
    ::close(file);
    return -1;
}

enum class LeftFile {
    kWork,   ///< or work that is damaged, of which the user is told when it is to be reopened
    kTorn,   ///< its program was ended before there was anything whole in it
    kOthers  ///< of another version, or not to be read now
};

LeftFile look(int file) {
    Bytes bytes(file);
    if (!hasSignature(bytes)) return bytes.hasEnded() ? LeftFile::kTorn : LeftFile::kOthers;
    return nextRecord(bytes) || !bytes.hasEnded() ? LeftFile::kWork : LeftFile::kTorn;
}

std::vector<std::string> pathsIn(const std::string& folder) {
    std::vector<std::pair<fs::file_time_type, std::string>> found;
    std::error_code error;
    for (fs::directory_iterator file(folder, error), end; !error && file != end; file.increment(error)) {
        std::error_code ignored;
        if (file->path().filename().string().starts_with(kNameBegins))
            found.emplace_back(fs::last_write_time(file->path(), ignored), file->path().string());
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

void LeftWork::remove() {
    ::unlink(path_.c_str());
}

// A record that says what cannot be ends the file as a torn one does.
SavedWork LeftWork::read() const {
    Bytes bytes(file_);
    if (!hasSignature(bytes)) throw RunTimeError::file(path_, "cannot be read", "it is no recovery file");
    SavedWork work;
    bool isAny = false;
    try {
        while (const auto record = nextRecord(bytes)) {
            if (!isAny && record->kind != kWork) break;
            takeRecord(file_, *record, work);
            isAny = true;
        }
    } catch (const DamagedBytes& damage) {
        if (!isAny) throw RunTimeError::file(path_, "cannot be read", damage.what());
    }
    if (!isAny) throw RunTimeError::file(path_, "cannot be read", "nothing in it is whole");
    return work;
}

std::deque<LeftWork> findLeftWork(const std::string& folder) {
    std::deque<LeftWork> left;
    if (folder.empty()) return left;
    for (const std::string& path : pathsIn(folder)) {
        const int file = take(path);
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
