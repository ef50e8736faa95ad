#include "PaceletApp/Application/QuitSignals.h"

#include <QCoreApplication>

#include <sys/eventfd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

namespace pacelet {

namespace {

constexpr std::array quitSignals{SIGINT, SIGTERM, SIGHUP};

/// What shells make of a signal's number.
constexpr int statusOfSignal = 128;

/// All that a signal's handler can reach.
std::atomic<int> mailbox{-1};

void post(int number) {
    const int error = errno;
    ::eventfd_write(mailbox, static_cast<eventfd_t>(number));
    errno = error;
}

} // namespace

QuitSignals::QuitSignals()
    : mailbox_{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)},
      notifier_{mailbox_.get(), QSocketNotifier::Read} {
    QObject::connect(&notifier_, &QSocketNotifier::activated, [this] { quit(); });
    mailbox = mailbox_.get();
    for (const int number : quitSignals) {
        struct sigaction now {};
        ::sigaction(number, nullptr, &now);
        if (now.sa_handler == SIG_DFL) {
            now.sa_handler = post;
            now.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
            ::sigaction(number, &now, nullptr);
        }
    }
}

QuitSignals::~QuitSignals() {
    for (const int number : quitSignals) {
        struct sigaction now {};
        ::sigaction(number, nullptr, &now);
        if (now.sa_handler == post) {
            std::signal(number, SIG_DFL);
        }
    }
}

void QuitSignals::quit() {
    eventfd_t number = 0;
    if (::eventfd_read(mailbox_.get(), &number) == 0) {
        QCoreApplication::exit(statusOfSignal + static_cast<int>(number));
    }
}

} // namespace pacelet
