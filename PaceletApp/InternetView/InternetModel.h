#pragma once

#include "PaceletApp/Support/SharedObjects.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// Whether slowness comes from this machine, the wireless link or the line.
class InternetModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")

public:
    explicit InternetModel(const SharedObjects& objects, QObject* parent = nullptr);

private:
    SharedObjects objects_;
};

} // namespace pacelet
