#pragma once

#include "Core/Internet/SpeedResult.h"
#include "Core/Platform/Platform.h"
#include "PaceletApp/Scheduler/Scheduler.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>

#include <optional>

namespace pacelet {

/// Runs speed tests, one at a time: two would halve each other. A test goes on when the screen that
/// asked for it has gone, and its result is kept in the preferences. Belongs to the UI thread.
class SpeedTester final : public QObject {
    Q_OBJECT

public:
    /// The host behind `platform` and the scheduler outlive this.
    SpeedTester(Platform platform, Scheduler& scheduler, QObject* parent = nullptr);

    /// Starts a test, or joins the one that is under way. `ended` follows.
    void run();

Q_SIGNALS:
    /// Nothing stands for a test that gave no result.
    void ended(const std::optional<pacelet::SpeedResult>& speed);

private:
    static QCoro::Task<> test(QPointer<SpeedTester> tester, Scheduler& scheduler, ToolRunner& tools,
                              Clock& clock, Preferences& preferences);

    Platform platform_;
    Scheduler& scheduler_;
    bool running_ = false;
};

} // namespace pacelet
