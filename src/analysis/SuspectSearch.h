// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/suspicious_sites.h"

#include <QObject>

#include <atomic>
#include <exception>
#include <memory>
#include <optional>
#include <thread>

namespace tessel {

/// Looks for suspicious sites in a thread of its own, so that windows stay alive. It looks at a survey that
/// nobody changes.
class SuspectSearch : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;
    /// Gives up what is under way, and waits for that.
    ~SuspectSearch() override;

    /// Begins another search; nothing more is heard of one that is under way. Never waits.
    void start(std::shared_ptr<const Survey> survey, const SuspectParameters& parameters);
    /// Nothing more is heard of the search under way.
    void cancel();

    bool isRunning() const { return next_ || (thread_.joinable() && !stop_); }
    /// How much is done, from 0 to 1.
    double part() const { return part_; }

  Q_SIGNALS:
    void found(const Suspects& suspects);
    /// It has thrown.
    void failed(const std::exception_ptr& failure);

  private:
    struct Order {
        std::shared_ptr<const Survey> survey;
        SuspectParameters parameters;
    };
    struct Outcome {
        Suspects suspects;
        std::exception_ptr failure;
    };

    void begin();
    Outcome outcomeOf(const Order& order);
    void end(const Outcome& outcome);

    std::optional<Order> next_;  ///< to begin when the one under way has ended
    std::thread thread_;
    std::atomic<bool> stop_ = false;
    std::atomic<double> part_ = 0;
};

}  // namespace tessel
