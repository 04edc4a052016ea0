// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/input_file.h"

#include <string>
#include <unistd.h>

namespace tessel {

/// An input file that is open until this goes. Throws as openInputFile does.
class OpenedFile {
  public:
    explicit OpenedFile(const std::string& path) : file_(openInputFile(path)) {}
    ~OpenedFile() { ::close(file_.descriptor); }
    OpenedFile(const OpenedFile&) = delete;
    OpenedFile& operator=(const OpenedFile&) = delete;

    int descriptor() const { return file_.descriptor; }
    const FileState& state() const { return file_; }

  private:
    InputFile file_;
};

}  // namespace tessel
