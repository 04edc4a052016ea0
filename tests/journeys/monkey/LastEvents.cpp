// SPDX-License-Identifier: GPL-3.0-or-later
#include "journeys/monkey/LastEvents.h"

namespace tessel {

// Where the sanitizers are linked in.
extern "C" [[gnu::weak]] void __sanitizer_set_death_callback(void (*callback)());

namespace {

constexpr std::size_t kEvents = 50;
constexpr unsigned kPatience = 300;  // seconds that an event may take on a machine that is busy

// Plain arrays, because a handler may not allocate.
using Line = std::array<char, 160>;
std::array<Line, kEvents> lines;
std::size_t next = 0;
long newest = -1;
Line seedLine;

void put(const Line& line) {
    [[maybe_unused]] const auto written =
        ::write(STDERR_FILENO, line.data(), ::strnlen(line.data(), line.size()));
}

void tellAndDie(int signal) {
    LastEvents::write();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

}  // namespace

void LastEvents::watch(unsigned long long seed) {
    std::snprintf(seedLine.data(), seedLine.size(), "the last events of seed %llu:\n", seed);
    std::signal(SIGALRM, tellAndDie);
    if (__sanitizer_set_death_callback != nullptr) return __sanitizer_set_death_callback(&LastEvents::write);
    for (const int signal : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL})
        std::signal(signal, tellAndDie);
}

void LastEvents::note(long number, const char* text) {
    // What is said of the same event later says more.
    if (number == newest) next = (next + kEvents - 1) % kEvents;
    newest = number;
    std::snprintf(lines[next].data(), lines[next].size(), "%8ld %s\n", number, text);
    next = (next + 1) % kEvents;
    ::alarm(kPatience);
}

void LastEvents::write() {
    put(seedLine);
    for (std::size_t i = 0; i < kEvents; ++i)
        put(lines[(next + i) % kEvents]);
}

}  // namespace tessel
