#include "PaceletApp/Application/SingleInstance.h"

#include "Core/Support/StandardStreams.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <utility>

namespace pacelet {

namespace {

const QByteArray showMessage = QByteArrayLiteral("show\n");

/// How long a second start waits for the first one, which may be starting itself, in milliseconds.
constexpr int answerLimit = 3000;
constexpr int betweenTries = 50;

/// Reads no more than this from whoever connects.
constexpr qint64 longestMessage = 2048;

/// A startup id or token that is longer is no leave that a desktop gives.
constexpr qsizetype longestLeave = 512;

const QString socketName = QStringLiteral("/window.socket");

/// Whether the folder belongs to the user alone. It is made where it is missing; one that another
/// user made, or a link, is left alone.
bool isOwn(const QByteArray& folder) {
    struct stat facts {};
    return (mkdir(folder.constData(), S_IRWXU) == 0 || errno == EEXIST) &&
           lstat(folder.constData(), &facts) == 0 && S_ISDIR(facts.st_mode) &&
           facts.st_uid == geteuid() && chmod(folder.constData(), S_IRWXU) == 0;
}

/// One line of the request, which has three: what is asked, the startup id, the token.
QByteArray lineOf(const QByteArray& leave) {
    return (leave.size() <= longestLeave && !leave.contains('\n') ? leave : QByteArray{}) + '\n';
}

/// Nothing while the request is not whole, or is none.
std::optional<Activation> parseRequest(const QByteArray& request) {
    const QList<QByteArray> lines = request.split('\n');
    return request.startsWith(showMessage) && lines.size() > 3
               ? std::optional{Activation{lines[1], lines[2]}}
               : std::nullopt;
}

bool leavesRoom(const QByteArray& socket) {
    return static_cast<std::size_t>(socket.size()) < sizeof sockaddr_un{}.sun_path;
}

} // namespace

SingleInstance::SingleInstance(const QStringList& folders, QObject* parent)
    : QObject{parent} {
    for (const QString& folder : folders) {
        const QByteArray path = QFile::encodeName(folder);
        const QByteArray lock = path + "/lock";
        if (!leavesRoom(path + QFile::encodeName(socketName)) || !isOwn(path)) {
            continue;
        }
        Descriptor held{open(lock.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600)};
        const bool locked = held && flock(held.get(), LOCK_EX | LOCK_NB) == 0;
        if (locked || (held && errno == EWOULDBLOCK)) {
            socket_ = folder + socketName;
            lock_ = std::move(held);
            first_ = locked;
            return;
        }
    }
}

QStringList SingleInstance::standardFolders() {
    QStringList folders;
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    // Qt makes the one that is missing a moment later: every start has to see the same.
    mkdir(QFile::encodeName(runtime).constData(), S_IRWXU);
    // Whoever works as another user may still have the old one's.
    if (!runtime.isEmpty() && QFileInfo{runtime}.ownerId() == geteuid()) {
        folders.append(runtime + QStringLiteral("/pacelet"));
    }
    folders.append(QDir::tempPath() + QStringLiteral("/pacelet-%1").arg(geteuid()));
    // Without a home, Qt would have it in the root folder.
    if (!qEnvironmentVariableIsEmpty("HOME")) {
        folders.append(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
                       QStringLiteral("/pacelet"));
    }
    return folders;
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
    if (!server_->listen(socket_)) {
        StandardStreams::complain("Pacelet: another start won't bring this window forward: " +
                                  server_->errorString().toStdString());
    }
}

void SingleInstance::answer() {
    while (QLocalSocket* const client = server_->nextPendingConnection()) {
        connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
        const auto read = [this, client] {
            if (const auto activation = parseRequest(client->peek(longestMessage))) {
                client->write(showMessage);
                client->disconnectFromServer();
                Q_EMIT showRequested(*activation);
            } else if (client->bytesAvailable() >= longestMessage) {
                client->abort();
            }
        };
        connect(client, &QLocalSocket::readyRead, this, read);
        read();
    }
}

bool SingleInstance::askToShow(const Activation& activation) const {
    QElapsedTimer elapsed;
    elapsed.start();
    while (elapsed.elapsed() < answerLimit) {
        QLocalSocket socket;
        socket.connectToServer(socket_);
        if (socket.waitForConnected(answerLimit)) {
            socket.write(showMessage + lineOf(activation.startupID) + lineOf(activation.token));
            socket.flush();
            return socket.waitForReadyRead(answerLimit) && socket.readAll() == showMessage;
        }
        QThread::msleep(betweenTries);
    }
    return false;
}

} // namespace pacelet
