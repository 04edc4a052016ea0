// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdexcept>
#include <string>

namespace tessel {

/// A failure that abandons the action under way: thrown where the cause is known, caught at the edge of the
/// event that began the action and shown in a box with its description. Data and program live on.
class RunTimeError : public std::runtime_error {
  public:
    /// The numbers are those users of the suite know from its other programs.
    enum Number { kOverflow = 6, kOutOfMemory = 7, kSubscript = 9, kDivisionByZero = 11, kFile = 57 };

    RunTimeError(Number number, const std::string& description)
        : std::runtime_error(description), number_(number) {}

    int number() const { return number_; }
    std::string description() const { return what(); }

    /// The same failure with a line of its own below the description: what the limit is and what to do.
    RunTimeError withAdvice(const std::string& advice) const;

    static RunTimeError overflow() { return {kOverflow, "Overflow"}; }
    static RunTimeError outOfMemory() { return {kOutOfMemory, "Out of memory"}; }
    static RunTimeError subscriptOutOfRange() { return {kSubscript, "Subscript out of range"}; }
    static RunTimeError divisionByZero() { return {kDivisionByZero, "Division by zero"}; }

    /// `action` says what was tried ("cannot be read"), `reason` is the system's own. The text reads
    /// "PATH cannot be read: No space left on device".
    static RunTimeError file(const std::string& path, const std::string& action, const std::string& reason) {
        return {kFile, path + " " + action + ": " + reason};
    }
    /// The same with the reason for a value of errno, in English whatever the machine's language.
    static RunTimeError file(const std::string& path, const std::string& action, int errnoValue);

  private:
    int number_;
};

}  // namespace tessel
