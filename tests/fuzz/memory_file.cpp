#include "fuzz/memory_file.h"

#include <sys/mman.h>
#include <unistd.h>

MemoryFile::MemoryFile(std::string_view bytes)
    : file_(::memfd_create("fuzz", MFD_CLOEXEC)), path_("/proc/self/fd/" + std::to_string(file_)) {
    require(::write(file_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
}

MemoryFile::~MemoryFile() {
    ::close(file_);
}
