#pragma once

#include "Core/Platform/OperatingSystem.h"

#include <QTranslator>

namespace pacelet {

/// Says every sentence of the screens in the words of the machine (see `HostWords`), for as long as
/// it lives. On a Mac it is never asked.
class HostTranslator final : public QTranslator {
    Q_OBJECT

public:
    explicit HostTranslator(OperatingSystem system);
    ~HostTranslator() override;

    QString translate(const char* context, const char* source, const char* disambiguation,
                      int count) const override;
    bool isEmpty() const override { return false; }

private:
    OperatingSystem system_;
};

} // namespace pacelet
