// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

/// Runs an action that mounts file systems in a process of its own, where nobody else sees them: a test of
/// the process that fails, fails the running one. False where this machine lets nobody do so; then nothing is
/// run.
bool runWithOwnMounts(const std::function<void()>& action);

/// A drive of a few megabytes, mounted on a folder for as long as the object lives. Within runWithOwnMounts
/// only.
class Drive {
  public:
    explicit Drive(const std::string& folder);
    ~Drive();
    Drive(const Drive&) = delete;
    Drive& operator=(const Drive&) = delete;

    /// Takes it away under whoever uses it; the folder on which it was is there, and empty.
    void vanish() const;
    /// What lies on it, wherever it is.
    std::string operator/(std::string_view name) const;
    /// Fills it with a file of this name.
    void fill(const std::string& name) const;
    void makeReadOnly() const;

  private:
    std::string folder_;
    int root_ = -1;
};

}  // namespace tessel
