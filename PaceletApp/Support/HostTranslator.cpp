#include "PaceletApp/Support/HostTranslator.h"

#include "Core/Platform/HostWords.h"
#include "PaceletApp/Support/QtText.h"

#include <QCoreApplication>

namespace pacelet {

HostTranslator::HostTranslator(OperatingSystem system)
    : system_{system} {
    if (system != OperatingSystem::macOS) {
        QCoreApplication::installTranslator(this);
    }
}

HostTranslator::~HostTranslator() {
    QCoreApplication::removeTranslator(this);
}

QString HostTranslator::translate(const char* /*context*/, const char* source,
                                  const char* /*disambiguation*/, int /*count*/) const {
    return source != nullptr ? qtText(HostWords::on(system_, source)) : QString{};
}

} // namespace pacelet
