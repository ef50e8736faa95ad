#include "PaceletApp/Application/SingleInstance.h"

#include "tests/Support/TemporaryFolder.h"

#include <QFile>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QThread>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

namespace pacelet {
namespace {

class SingleInstanceTest : public ::testing::Test {
protected:
    testing::TemporaryFolder temporary;
    const QString folder = QString::fromStdString((temporary.path() / "run").string());
};

/// Asks from a thread of its own, as another process would.
bool ask(const QString& folder, const Activation& activation = {}) {
    bool answered = false;
    const std::unique_ptr<QThread> other{
        QThread::create([&] { answered = SingleInstance{{folder}}.askToShow(activation); })};
    other->start();
    while (!other->wait(5)) {
        QCoreApplication::processEvents();
    }
    return answered;
}

TEST_F(SingleInstanceTest, ALaterStartBringsTheFirstForward) {
    SingleInstance first{{folder}};
    first.listen();
    ASSERT_TRUE(first.isFirst());
    QSignalSpy shown{&first, &SingleInstance::showRequested};
    for (int start = 1; start <= 3; ++start) {
        EXPECT_FALSE(SingleInstance{{folder}}.isFirst());
        EXPECT_TRUE(ask(folder));
        EXPECT_EQ(shown.count(), start);
    }
}

TEST_F(SingleInstanceTest, TheLeaveToComeForwardIsHandedOn) {
    SingleInstance first{{folder}};
    first.listen();
    Activation got;
    QObject::connect(&first, &SingleInstance::showRequested,
                     [&](const Activation& activation) { got = activation; });
    for (const auto& [id, token, time] :
         {std::tuple{QByteArray{"shell/pacelet/7-host_TIME4210"}, QByteArray{"to ken"}, 4210},
          {QByteArray{"a_TIMEx"}, QByteArray{}, -1},
          {QByteArray{}, QByteArray{"only"}, -1}}) {
        EXPECT_TRUE(ask(folder, {id, token}));
        EXPECT_EQ(got.startupID, id);
        EXPECT_EQ(got.token, token);
        EXPECT_EQ(got.time() ? static_cast<int>(*got.time()) : -1, time);
    }
    EXPECT_TRUE(ask(folder, {QByteArray(5000, 'x'), "two\nlines"}));
    EXPECT_TRUE(got.startupID.isEmpty() && got.token.isEmpty());
}

TEST_F(SingleInstanceTest, TheNextStartAfterTheEndIsFirstAgain) {
    std::make_unique<SingleInstance>(QStringList{folder})->listen();
    SingleInstance next{{folder}};
    next.listen();
    EXPECT_TRUE(next.isFirst());
    EXPECT_TRUE(ask(folder));
}

TEST_F(SingleInstanceTest, WhatACrashLeavesBehindStopsNobody) {
    const pid_t child = fork();
    if (child == 0) {
        auto* left = new SingleInstance{{folder}};
        left->listen();
        _exit(left->isFirst() ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
    ASSERT_TRUE(QFile::exists(folder + "/window.socket"));
    SingleInstance next{{folder}};
    next.listen();
    EXPECT_TRUE(next.isFirst());
    EXPECT_TRUE(ask(folder));
}

TEST_F(SingleInstanceTest, StrangeMessagesDoNothing) {
    SingleInstance first{{folder}};
    first.listen();
    QSignalSpy shown{&first, &SingleInstance::showRequested};
    for (const QByteArray& message :
         {QByteArray{}, QByteArray{"sho"}, QByteArray{"SHOW\n"}, QByteArray(100000, 'x')}) {
        QLocalSocket socket;
        socket.connectToServer(folder + "/window.socket");
        ASSERT_TRUE(socket.waitForConnected(1000));
        socket.write(message);
        socket.flush();
        for (int turn = 0; turn < 20; ++turn) {
            QCoreApplication::processEvents();
        }
    }
    EXPECT_EQ(shown.count(), 0);
    EXPECT_TRUE(ask(folder));
}

TEST_F(SingleInstanceTest, TheNextFolderServesWhereOneCannotBeUsed) {
    const auto path = [&](const std::string& name) {
        return QString::fromStdString((temporary.path() / name).string());
    };
    temporary.write("file", "");
    temporary.link("link", temporary.path());
    QStringList unusable{path("file/run"), path("file"), path("link"), path("missing/run"),
                         path(std::string(100, 'x'))};
    std::filesystem::create_directories(temporary.path() / "foreign");
    if (chown((temporary.path() / "foreign").c_str(), 65534, 65534) == 0) {
        // One that somebody else has made, with a lock and an answer of theirs, maybe.
        unusable.append(path("foreign"));
    }
    EXPECT_TRUE(SingleInstance{unusable}.isFirst());
    EXPECT_FALSE(SingleInstance{unusable}.isKnown());
    const SingleInstance first{unusable + QStringList{folder}};
    EXPECT_TRUE(first.isFirst());
    EXPECT_FALSE((SingleInstance{unusable + QStringList{folder}}.isFirst()));
}

} // namespace
} // namespace pacelet
