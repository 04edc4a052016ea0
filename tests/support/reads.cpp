// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/reads.h"

namespace tessel {

namespace {

int readingsLeft = 0;
std::function<void(int)> whatHappens;

}  // namespace

BeforeReading::BeforeReading(int reading, std::function<void(int file)> act) {
    readingsLeft = reading;
    whatHappens = std::move(act);
}

BeforeReading::~BeforeReading() {
    readingsLeft = 0;
    whatHappens = nullptr;
}

bool BeforeReading::happened() const {
    return readingsLeft == 0;
}

void breakDevice(int file) {
    const int broken = ::open("/proc/self/mem", O_RDONLY);
    ASSERT_GE(broken, 0);
    ASSERT_GE(::dup2(broken, file), 0);
    ::close(broken);
}

// The linker lets every read() of the test program's own code come here (--wrap).
extern "C" {
ssize_t __real_read(int file, void* buffer, std::size_t size);
ssize_t __wrap_read(int file, void* buffer, std::size_t size);

ssize_t __wrap_read(int file, void* buffer, std::size_t size) {
    if (readingsLeft > 0 && --readingsLeft == 0) whatHappens(file);
    return __real_read(file, buffer, size);
}
}

}  // namespace tessel
