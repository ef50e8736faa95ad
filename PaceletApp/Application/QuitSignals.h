#pragma once

#include "Core/Support/Descriptor.h"

#include <QSocketNotifier>

#include <array>

namespace pacelet {

/// Has Ctrl+C in the terminal, and whoever asks the program to end, end its event loop, so that it
/// leaves nothing behind. The second time it ends at once. Signals that are ignored stay so. One at
/// a time.
class QuitSignals {
public:
    QuitSignals();
    QuitSignals(const QuitSignals&) = delete;
    QuitSignals& operator=(const QuitSignals&) = delete;
    ~QuitSignals();

private:
    void quit();

    std::array<Descriptor, 2> mailbox_; ///< both ends of a pipe
    QSocketNotifier notifier_;
};

} // namespace pacelet
