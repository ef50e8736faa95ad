#pragma once

#include "Core/Support/Descriptor.h"
#include "PaceletApp/Application/Activation.h"

#include <QLocalServer>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

namespace pacelet {

/// Sees to it that a user runs the program once. The first start holds a lock, which the system
/// takes back however it ends, and listens; a later start asks it to come forward.
class SingleInstance final : public QObject {
    Q_OBJECT

public:
    /// The first of `folders` counts that is the user's own and nobody else's, or can be made so,
    /// and whose path leaves room for a socket's.
    explicit SingleInstance(const QStringList& folders, QObject* parent = nullptr);

    /// The user's runtime folder, one below the folder of temporary files, and one of the user's
    /// files.
    static QStringList standardFolders();

    /// False when another process of the user runs the program. Where none of the folders can be
    /// used, nothing is known, and this is the first.
    bool isFirst() const { return first_; }

    /// False where none of the folders can be used: every start is the first one then.
    bool isKnown() const { return static_cast<bool>(lock_); }

    /// Begins to answer later starts, which are patient for a while. Needs the program's event
    /// loop, so the QCoreApplication has been made; does nothing when this is not the first.
    void listen();

    /// Asks the running program to bring its window forward, with the leave that this start was
    /// given. False when it does not answer in time.
    bool askToShow(const Activation& activation = {}) const;

Q_SIGNALS:
    /// Another start has asked for the window.
    void showRequested(const pacelet::Activation& activation);

private:
    void answer();

    QString socket_;
    Descriptor lock_;
    bool first_ = true;
    std::unique_ptr<QLocalServer> server_;
};

} // namespace pacelet
