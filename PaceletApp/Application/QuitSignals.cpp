#include "PaceletApp/Application/QuitSignals.h"

#include <QCoreApplication>

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>

namespace pacelet {

namespace {

constexpr std::array quitSignals{SIGINT, SIGTERM, SIGHUP};

/// What shells make of a signal's number.
constexpr int statusOfSignal = 128;

/// All that a signal's handler can reach.
std::atomic<int> mailbox{-1};

void post(int number) {
    const int error = errno;
    const auto byte = static_cast<std::uint8_t>(number);
    [[maybe_unused]] const ssize_t written = ::write(mailbox, &byte, sizeof byte);
    errno = error;
}

/// A pipe whose ends do not block, and that no child process gets.
std::array<Descriptor, 2> openedPipe() {
    std::array<int, 2> ends{-1, -1};
    if (::pipe(ends.data()) == 0) {
        for (const int end : ends) {
            ::fcntl(end, F_SETFD, FD_CLOEXEC);
            ::fcntl(end, F_SETFL, O_NONBLOCK);
        }
    }
    return {Descriptor{ends[0]}, Descriptor{ends[1]}};
}

} // namespace

QuitSignals::QuitSignals()
    : mailbox_{openedPipe()},
      notifier_{mailbox_[0].get(), QSocketNotifier::Read} {
    QObject::connect(&notifier_, &QSocketNotifier::activated, [this] { quit(); });
    mailbox = mailbox_[1].get();
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
    std::uint8_t number = 0;
    if (::read(mailbox_[0].get(), &number, sizeof number) == sizeof number) {
        QCoreApplication::exit(statusOfSignal + number);
    }
}

} // namespace pacelet
