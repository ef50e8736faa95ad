#pragma once

#include "Core/Internet/Link.h"
#include "Core/Platform/NetworkLink.h"

#include <coroutine>
#include <memory>

namespace pacelet {

/// One reading of the kind of link, which a task of the UI thread awaits; it holds no thread
/// meanwhile. Copies are one reading. The task goes on in a turn of the UI thread, and must look
/// then whether its owner still lives.
class LinkReading {
public:
    /// Starts to read.
    explicit LinkReading(NetworkLink& network);

    bool await_ready() const;
    /// False when the answer came meanwhile.
    bool await_suspend(std::coroutine_handle<> waiting);
    LinkType await_resume() const;

private:
    struct Answer;
    std::shared_ptr<Answer> answer_;
};

} // namespace pacelet
