#include "Hosts/Linux/Speed/Load.h"

#include "Hosts/Linux/Speed/SpeedFailure.h"

#include <utility>

namespace pacelet::Linux {

namespace {

constexpr std::size_t mostConnections = 16;

/// A page of a captive portal is smaller than this, and so is an upload that nobody wants.
constexpr std::int64_t smallestLoad = 1'000'000;

} // namespace

Load::Load(TransferLoop& loop, std::string url, Direction direction, SentBytes& sent)
    : loop_{loop},
      url_{std::move(url)},
      direction_{direction},
      sent_{sent} {}

void Load::add() {
    if (transfers_.size() < mostConnections) {
        transfers_.push_back(newTransfer());
    }
}

void Load::keepUp() {
    for (std::unique_ptr<Transfer>& transfer : transfers_) {
        if (!transfer->hasEnded()) {
            continue;
        }
        transfer->requireSuccess();
        if (transfer->moved() < smallestLoad) {
            throw SpeedFailure{"the server's file is too small to load the line"};
        }
        movedByEnded_ += transfer->moved();
        transfer = newTransfer();
    }
}

std::int64_t Load::bytes() const {
    return direction_ == Direction::upload ? sent_.acknowledged() : bytesUsed();
}

std::unique_ptr<Transfer> Load::newTransfer() {
    return direction_ == Direction::upload
               ? std::make_unique<Transfer>(loop_, url_, sent_)
               : std::make_unique<Transfer>(loop_, url_, ConnectionUse::loading);
}

std::int64_t Load::movedByOpen() const {
    std::int64_t sum = 0;
    for (const std::unique_ptr<Transfer>& transfer : transfers_) {
        sum += transfer->moved();
    }
    return sum;
}

} // namespace pacelet::Linux
