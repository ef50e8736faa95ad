#pragma once

#include <QMenuBar>
#include <QObject>

#include <functional>

namespace pacelet {

class Application;

/// A menu bar that stands apart from all windows, as on a Mac, with every command and its keys. The
/// main window shows no menu beside it. A Mac gives the first menu itself, under the program's
/// name, and takes into it what has a role of its own: the settings, updates, the program's end.
class ApplicationMenu final : public QObject {
    Q_OBJECT

public:
    /// To be made before a window opens. `showAbout` may be missing.
    ApplicationMenu(Application& application, std::function<void()> showAbout);

    const QMenuBar& bar() const { return bar_; }

private:
    QMenuBar bar_;
};

} // namespace pacelet
