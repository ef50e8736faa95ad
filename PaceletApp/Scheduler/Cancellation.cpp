#include "PaceletApp/Scheduler/Cancellation.h"

namespace pacelet {

CancellationHandler::CancellationHandler(const CancellationToken& token,
                                         std::function<void()> handle)
    : state_{token.state_} {
    if (!state_) {
        return;
    }
    if (state_->cancelled) {
        handle();
        return;
    }
    id_ = state_->nextHandler++;
    state_->handlers.emplace(id_, std::move(handle));
}

CancellationHandler::~CancellationHandler() {
    if (state_) {
        state_->handlers.erase(id_);
    }
}

void CancellationSource::cancel() {
    state_->cancelled = true;
    const auto handlers = std::exchange(state_->handlers, {});
    for (const auto& [id, handle] : handlers) {
        handle();
    }
}

} // namespace pacelet
