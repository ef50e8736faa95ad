#pragma once

#include "PaceletApp/Support/SharedObjects.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// The list of everything that runs.
class ProcessesModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")

public:
    explicit ProcessesModel(const SharedObjects& objects, QObject* parent = nullptr);

private:
    SharedObjects objects_;
};

} // namespace pacelet
