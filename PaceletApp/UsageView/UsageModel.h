#pragma once

#include "PaceletApp/Support/SharedObjects.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// How hard the machine works, and whether it is time for another.
class UsageModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")

public:
    explicit UsageModel(const SharedObjects& objects, QObject* parent = nullptr);

private:
    SharedObjects objects_;
};

} // namespace pacelet
