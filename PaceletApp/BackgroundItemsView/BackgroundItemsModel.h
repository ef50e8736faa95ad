#pragma once

#include "PaceletApp/Support/SharedObjects.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// What applications have set to run in the background.
class BackgroundItemsModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")

public:
    explicit BackgroundItemsModel(const SharedObjects& objects, QObject* parent = nullptr);

private:
    SharedObjects objects_;
};

} // namespace pacelet
