#include "PaceletApp/InternetView/LinkReading.h"

#include "Core/Internet/LinkReader.h"

#include <QCoreApplication>

#include <mutex>
#include <optional>

namespace pacelet {

struct LinkReading::Answer {
    std::mutex mutex;
    std::optional<LinkType> type;
    std::coroutine_handle<> waiting;

    void take(LinkType read) {
        const std::lock_guard lock{mutex};
        type = read;
        if (waiting) {
            QMetaObject::invokeMethod(
                QCoreApplication::instance(), [task = waiting] { task.resume(); },
                Qt::QueuedConnection);
        }
    }
};

LinkReading::LinkReading(NetworkLink& network)
    : answer_{std::make_shared<Answer>()} {
    LinkReader::currentType(network, [answer = answer_](LinkType type) { answer->take(type); });
}

bool LinkReading::await_ready() const {
    const std::lock_guard lock{answer_->mutex};
    return answer_->type.has_value();
}

bool LinkReading::await_suspend(std::coroutine_handle<> waiting) {
    const std::lock_guard lock{answer_->mutex};
    answer_->waiting = waiting;
    return !answer_->type;
}

LinkType LinkReading::await_resume() const {
    const std::lock_guard lock{answer_->mutex};
    return *answer_->type;
}

} // namespace pacelet
