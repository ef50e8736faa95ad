#pragma once

#include "Core/Support/Descriptor.h"

#include <QLocalServer>
#include <QObject>
#include <QString>

#include <memory>

namespace pacelet {

/// Sees to it that a user runs the program once. The first start holds a lock, which the system
/// takes back however it ends, and listens; a later start asks it to come forward.
class SingleInstance final : public QObject {
    Q_OBJECT

public:
    /// `folder` is one of the user's own, and is made when it is not there.
    explicit SingleInstance(const QString& folder, QObject* parent = nullptr);

    /// The user's runtime folder; one below the folder of temporary files where there is none.
    static QString standardFolder();

    /// False when another process of the user runs the program. Where the folder cannot be used,
    /// nothing is known, and this is the first.
    bool isFirst() const { return first_; }

    /// Begins to answer later starts, which are patient for a while. Needs the program's event loop,
    /// so the QCoreApplication has been made; does nothing when this is not the first.
    void listen();

    /// Asks the running program to bring its window forward. False when it does not answer in time.
    bool askToShow() const;

Q_SIGNALS:
    /// Another start has asked for the window.
    void showRequested();

private:
    void answer();

    QString socket_;
    Descriptor lock_;
    bool first_ = true;
    std::unique_ptr<QLocalServer> server_;
};

} // namespace pacelet
