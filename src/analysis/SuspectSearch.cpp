// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/SuspectSearch.h"

#include <utility>

namespace tessel {

SuspectSearch::~SuspectSearch() {
    cancel();
    if (thread_.joinable()) thread_.join();
}

void SuspectSearch::start(std::shared_ptr<const Survey> survey, const SuspectParameters& parameters) {
    next_ = Order{std::move(survey), parameters};
    if (thread_.joinable())
        stop_ = true;  // the next one begins when it has ended
    else
        begin();
}

void SuspectSearch::cancel() {
    next_.reset();
    stop_ = true;
}

void SuspectSearch::begin() {
    stop_ = false;
    part_ = 0;
    thread_ = std::thread([this, order = *std::exchange(next_, std::nullopt)] {
        auto outcome = std::make_shared<const Outcome>(outcomeOf(order));
        QMetaObject::invokeMethod(
            this, [this, outcome] { end(*outcome); }, Qt::QueuedConnection);
    });
}

SuspectSearch::Outcome SuspectSearch::outcomeOf(const Order& order) {
    try {
        return {findSuspects(*order.survey, order.parameters,
                             [this](double part) {
                                 part_ = part;
                                 return !stop_;
                             }),
                nullptr};
    } catch (...) {
        return {{}, std::current_exception()};
    }
}

void SuspectSearch::end(const Outcome& outcome) {
    thread_.join();
    if (next_) return begin();
    if (stop_) return;
    if (outcome.failure)
        Q_EMIT failed(outcome.failure);
    else
        Q_EMIT found(outcome.suspects);
}

}  // namespace tessel
