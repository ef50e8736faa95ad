#pragma once

#include "Hosts/Linux/Speed/Transfer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// The connections that fill the line, in one direction.
class Load {
public:
    enum class Direction { download, upload };

    /// `sent` outlives the loop.
    Load(TransferLoop& loop, std::string url, Direction direction, SentBytes& sent);

    /// One connection more, up to a number that no line needs.
    void add();

    /// Begins anew what came to its end. Throws `SpeedFailure` when a connection broke, the server
    /// refused, or its file is too small to load anything with.
    void keepUp();

    /// What got through so far.
    std::int64_t bytes() const;

    /// What the test has used of the line so far; a little more when sending.
    std::int64_t bytesUsed() const { return movedByEnded_ + movedByOpen(); }

    std::size_t connections() const { return transfers_.size(); }

private:
    std::unique_ptr<Transfer> newTransfer();
    std::int64_t movedByOpen() const;

    TransferLoop& loop_;
    std::string url_;
    Direction direction_;
    SentBytes& sent_;
    std::vector<std::unique_ptr<Transfer>> transfers_;
    std::int64_t movedByEnded_ = 0;
};

} // namespace pacelet::Linux
