#include "tests/browser/RealBrowser.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QStandardPaths>
#include <QTcpSocket>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace pacelet::testing {

namespace {

/// A title as it was before the browser wrote it for a page.
std::string unescaped(QString title) {
    for (const auto& [escape, character] : std::initializer_list<std::pair<QString, QString>>{
             {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&#39;", "'"}, {"&amp;", "&"}}) {
        title.replace(escape, character);
    }
    return title.toStdString();
}

} // namespace

PageServer::PageServer() {
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
        while (QTcpSocket* const socket = server_.nextPendingConnection()) {
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                if (socket->peek(1 << 16).contains("\r\n\r\n")) {
                    answer(*socket);
                }
            });
        }
    });
    server_.listen(QHostAddress::LocalHost);
}

std::string PageServer::address(std::size_t page) const {
    return "http://127.0.0.1:" + std::to_string(server_.serverPort()) + "/" + std::to_string(page);
}

void PageServer::answer(QTcpSocket& socket) const {
    const QByteArray path = socket.readAll().split(' ').value(1);
    const auto number = static_cast<std::size_t>(path.mid(1).split('?').first().toUInt());
    const Page page = number < pages.size() ? pages[number] : Page{};
    const QJsonArray facts{QString::fromStdString(page.title),
                           QString::fromStdString(page.addition)};
    QByteArray body = "<!doctype html><meta charset=utf-8><link rel=icon href='data:,'><script>"
                      "const [title, addition] = " +
                      QJsonDocument{facts}.toJson(QJsonDocument::Compact).replace('<', "\\u003c") +
                      "; document.title = title;"
                      "history.replaceState(null, '', location.pathname + addition)</script>";
    socket.write("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nConnection: close\r\n"
                 "Content-Length: " +
                 QByteArray::number(body.size()) + "\r\n\r\n" + body);
    socket.disconnectFromHost();
}

RealBrowser::RealBrowser(std::string userData)
    : userData_{std::move(userData)} {}

bool RealBrowser::isThere() {
    return !QStandardPaths::findExecutable("chromium").isEmpty();
}

std::vector<std::string> RealBrowser::command(const std::vector<std::string>& arguments) const {
    // Without the sandbox, which a machine may not allow, on pages of our own alone.
    std::vector<std::string> all{
        "/usr/lib/chromium/chromium",
        "--no-sandbox",
        "--no-first-run",
        "--no-default-browser-check",
        "--disable-gpu",
        "--disable-dev-shm-usage",
        "--disable-background-networking",
        "--disable-component-update",
        "--disable-sync",
        "--no-proxy-server",
        "--renderer-process-limit=3",
        "--password-store=basic",
        "--remote-debugging-port=0",
        "--disable-features=DisableLoadExtensionCommandLineSwitch,HttpsUpgrades,Translate",
        "--load-extension=" + QCoreApplication::applicationDirPath().toStdString() +
            "/Pacelet_Core.bundle/browser-extension",
        "--user-data-dir=" + userData_};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return all;
}

void RealBrowser::open(const std::vector<std::string>& arguments) {
    const Environment environment{{"DISPLAY", display_.name()}, {"WAYLAND_DISPLAY", ""}};
    auto started = std::make_unique<ChildProgram>(command(arguments), environment);
    if (program_ && program_->runs()) {
        // It hands over to the one that runs.
        comesTrue([&] { return !started->runs(); });
    } else {
        program_ = std::move(started);
    }
}

std::vector<OpenPage> RealBrowser::pages() const {
    QFile file{QString::fromStdString(userData_ + "/DevToolsActivePort")};
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QNetworkAccessManager network;
    network.setProxy(QNetworkProxy::NoProxy);
    QNetworkRequest request{
        QUrl{"http://127.0.0.1:" + QString::fromLatin1(file.readLine().trimmed()) + "/json/list"}};
    request.setTransferTimeout(browserPatience / 4);
    const std::unique_ptr<QNetworkReply> reply{network.get(request)};
    comesTrue([&] { return reply->isFinished(); });
    std::vector<OpenPage> all;
    for (const QJsonValue each : QJsonDocument::fromJson(reply->readAll()).array()) {
        const QString address = each["url"].toString();
        if (each["type"].toString() == "page" && address.startsWith("http")) {
            all.emplace_back(address.toStdString(), unescaped(each["title"].toString()));
        }
    }
    std::sort(all.begin(), all.end());
    return all;
}

bool RealBrowser::opens(const std::string& address) const {
    const auto all = pages();
    return std::any_of(all.begin(), all.end(),
                       [&](const OpenPage& page) { return page.first == address; });
}

void RealBrowser::kill() {
    program_.reset();
    std::filesystem::remove(userData_ + "/DevToolsActivePort");
}

std::vector<int> RealBrowser::bridges() const {
    std::vector<int> all;
    for (const auto& entry : std::filesystem::directory_iterator{"/proc"}) {
        QFile name{QString::fromStdString(entry.path().string() + "/comm")};
        QFile stat{QString::fromStdString(entry.path().string() + "/stat")};
        if (name.open(QIODevice::ReadOnly) && name.readAll().startsWith("pacelet-browser") &&
            stat.open(QIODevice::ReadOnly) && program_ &&
            stat.readAll().split(')').last().split(' ').value(2).toInt() == program_->pid()) {
            all.push_back(std::stoi(entry.path().filename().string()));
        }
    }
    return all;
}

} // namespace pacelet::testing
