#pragma once

namespace pacelet {

class AppPreferences;
class AppUpdater;
class FixActions;
class Monitor;
class QuestionModel;
class Router;
class Scheduler;
class SpeedTester;
struct Platform;

/// The long-lived objects that every screen reads and calls. They outlive all screens.
struct SharedObjects {
    Monitor& monitor;
    Router& router;
    FixActions& actions;
    AppPreferences& preferences;
    AppUpdater& updater;
    SpeedTester& speedTester;
    Scheduler& scheduler;
    QuestionModel& question; ///< of the main window
    const Platform& platform;
};

} // namespace pacelet
