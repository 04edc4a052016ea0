#include "app/file_replacement.h"

#include "app/run_time_error.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 18;

// The file that a path stands for, so that replacing a symbolic link's target leaves the link a link.
std::string followLinks(const std::string& path) {
    std::error_code error;
    const auto real = std::filesystem::canonical(path, error);
    return error ? path : real.string();
}

std::string pathOfOpenFile(int file) {
    return "/proc/self/fd/" + std::to_string(file);
}

mode_t defaultMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return static_cast<mode_t>(0666) & ~mask;
}

}  // namespace

FileReplacement::FileReplacement(const std::string& path) : target_(followLinks(path)) {
    struct stat status {};
    const bool exists = ::stat(target_.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) fail(EISDIR);
    if (exists && !S_ISREG(status.st_mode)) fail(EINVAL);
    if (exists && ((status.st_mode & 0222) == 0 || ::access(target_.c_str(), W_OK) != 0)) fail(EACCES);
    open();
    if (::fchmod(file_, exists ? status.st_mode & 07777 : defaultMode()) != 0) fail(errno);
    buffer_.reserve(kBufferSize);
}

FileReplacement::~FileReplacement() {
    discard();
}

std::string FileReplacement::besideTarget(const std::string& name) const {
    return (std::filesystem::path(target_).parent_path() / name).string();
}

// Opens a file without a name if it can be given one later, or else one with a name.
void FileReplacement::open() {
    file_ = ::open(besideTarget(".").c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
    if (file_ >= 0 && ::access(pathOfOpenFile(file_).c_str(), F_OK) == 0) return;
    if (file_ >= 0) ::close(file_);
    temporary_ = besideTarget(".tessel-XXXXXX");
    file_ = ::mkostemp(temporary_.data(), O_CLOEXEC);
    if (file_ >= 0) return;
    temporary_.clear();
    fail(errno);
}

void FileReplacement::giveName() {
    const std::string nameless = pathOfOpenFile(file_);
    for (int number = 0; temporary_.empty(); ++number) {
        const std::string name =
            besideTarget(".tessel-" + std::to_string(::getpid()) + '-' + std::to_string(number));
        if (::linkat(AT_FDCWD, nameless.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0)
            temporary_ = name;
        else if (errno != EEXIST)
            fail(errno);
    }
}

void FileReplacement::commit() {
    flush();
    if (::fsync(file_) != 0) fail(errno);
    giveName();
    const int closed = ::close(file_);
    file_ = -1;
    if (closed != 0) fail(errno);
    if (::rename(temporary_.c_str(), target_.c_str()) != 0) fail(errno);
    temporary_.clear();
}

void FileReplacement::flush() {
    for (std::string_view rest = buffer_; !rest.empty();) {
        const ssize_t written = ::write(file_, rest.data(), rest.size());
        if (written < 0 && errno != EINTR) fail(errno);
        if (written > 0) rest.remove_prefix(static_cast<std::size_t>(written));
    }
    buffer_.clear();
}

void FileReplacement::discard() {
    if (file_ >= 0) ::close(file_);
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
    file_ = -1;
    temporary_.clear();
}

void FileReplacement::fail(int errnoValue) {
    discard();
    throw RunTimeError::file(target_, "cannot be written", errnoValue);
}
