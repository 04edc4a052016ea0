// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

/// Gives a variable of the environment another value, or none, while the object lives.
class Environment {
  public:
    Environment(const char* name, const std::optional<std::string>& value) : name_(name) {
        if (const char* const before = std::getenv(name)) before_ = before;
        set(value);
    }
    ~Environment() { set(before_); }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    void set(const std::optional<std::string>& value) const {
        value ? ::setenv(name_, value->c_str(), 1) : ::unsetenv(name_);
    }

  private:
    const char* name_;
    std::optional<std::string> before_;
};

}  // namespace tessel
