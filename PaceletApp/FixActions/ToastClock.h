#pragma once

#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/Scheduler/StopOwner.h"

#include <QObject>

#include <optional>

namespace pacelet {

/// Takes a toast away when it has been on screen for a while. Lives with the window that shows it.
///
/// A new text ends the wait of the one before it, and a wait that ends clears whatever stands there
/// then: a toast that replaces another one is short-lived.
class ToastClock final : public QObject {
    Q_OBJECT

public:
    static constexpr Seconds lifetime{4};

    ToastClock(FixActions& actions, Scheduler& scheduler, QObject* parent = nullptr);

private:
    void restart();

    FixActions& actions_;
    Scheduler& scheduler_;
    std::optional<StopOwner> wait_;
};

} // namespace pacelet
