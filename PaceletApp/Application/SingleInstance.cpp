#include "PaceletApp/Application/SingleInstance.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLocalSocket>
#include <QThread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace pacelet {

namespace {

const QByteArray showMessage = QByteArrayLiteral("show\n");

/// How long a second start waits for the first one, which may be starting itself, in milliseconds.
constexpr int patience = 3000;
constexpr int betweenTries = 50;

/// Reads no more than this from whoever connects.
constexpr qint64 longestMessage = 64;

} // namespace

SingleInstance::SingleInstance(const QString& folder, QObject* parent)
    : QObject{parent}, socket_{folder + QStringLiteral("/window.socket")} {
    if (!QDir{}.mkpath(folder)) {
        return;
    }
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QByteArray lockFile = QFile::encodeName(folder + QStringLiteral("/lock"));
    lock_ = Descriptor{open(lockFile.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600)};
    if (!lock_) {
        return;
    }
    first_ = flock(lock_.get(), LOCK_EX | LOCK_NB) == 0;
}

QString SingleInstance::standardFolder() {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty() && QDir{runtime}.exists()) {
        return runtime + QStringLiteral("/pacelet");
    }
    return QDir::tempPath() + QStringLiteral("/pacelet-%1").arg(getuid());
}

void SingleInstance::listen() {
    if (!first_ || !lock_) {
        return;
    }
    // Who holds the lock owns the name; a socket that stands there was left by a program that is
    // gone.
    QLocalServer::removeServer(socket_);
    server_ = std::make_unique<QLocalServer>();
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    connect(server_.get(), &QLocalServer::newConnection, this, &SingleInstance::answer);
    server_->listen(socket_);
}

void SingleInstance::answer() {
    while (QLocalSocket* const client = server_->nextPendingConnection()) {
        connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
        const auto read = [this, client] {
            if (client->peek(longestMessage).startsWith(showMessage)) {
                client->write(showMessage);
                client->disconnectFromServer();
                Q_EMIT showRequested();
            } else if (client->bytesAvailable() >= longestMessage) {
                client->abort();
            }
        };
        connect(client, &QLocalSocket::readyRead, this, read);
        read();
    }
}

bool SingleInstance::askToShow() const {
    QElapsedTimer elapsed;
    elapsed.start();
    while (elapsed.elapsed() < patience) {
        QLocalSocket socket;
        socket.connectToServer(socket_);
        if (socket.waitForConnected(patience)) {
            socket.write(showMessage);
            socket.flush();
            return socket.waitForReadyRead(patience) && socket.readAll() == showMessage;
        }
        QThread::msleep(betweenTries);
    }
    return false;
}

} // namespace pacelet
