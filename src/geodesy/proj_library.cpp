// SPDX-License-Identifier: GPL-3.0-or-later
#include "geodesy/proj_library.h"

#include "base/run_time_error.h"

#include <dlfcn.h>
#include <memory>

namespace tessel {

namespace {

[[noreturn]] void failFor(const std::string& name) {
    throw RunTimeError::file(name, "cannot be opened", dlerror());
}

void* opened(const std::string& name) {
    void* const library = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) failFor(name);
    return library;
}

}  // namespace

ProjLibrary::ProjLibrary(const std::string& name) : name_(name), library_(opened(name)) {}

const ProjLibrary* ProjLibrary::ofSystem() {
    static const std::unique_ptr<const ProjLibrary> kLibrary = []() -> std::unique_ptr<const ProjLibrary> {
        try {
            return std::make_unique<ProjLibrary>(TESSEL_PROJ_LIBRARY);
        } catch (const RunTimeError&) {
            return nullptr;
        }
    }();
    return kLibrary.get();
}

ProjLibrary::Address ProjLibrary::addressOf(const char* function) const {
    void* const address = dlsym(library_, function);
    if (address == nullptr) failFor(name_);
    return {address};
}

}  // namespace tessel
