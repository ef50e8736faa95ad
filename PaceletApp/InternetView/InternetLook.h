#pragma once

#include "Core/Diagnosis/Finding.h"
#include "Core/Internet/Link.h"
#include "Core/Internet/NetUsage.h"
#include "Core/Internet/SpeedResult.h"
#include "Core/Platform/HostAbilities.h"
#include "PaceletApp/Support/Question.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <string>
#include <vector>

namespace pacelet {

/// What the internet screen has measured.
struct InternetState {
    std::optional<LinkType> link; ///< nothing until the first reading
    std::optional<WiFiLink> wifi;
    std::vector<NetUsage> usage;
    bool usageLoaded = false; ///< the first sample has come back
    std::optional<SpeedResult> speed;
    bool testing = false;
    std::optional<std::string> testError; ///< of the last test, if it failed
    bool isMetered = false;               ///< data is counted on this link
    HostAbilities abilities{};
};

/// The words of the screen that are no rows of a list.
struct InternetLook {
    Q_GADGET
    QML_VALUE_TYPE(internetLook)
    Q_PROPERTY(bool checking MEMBER checking CONSTANT)
    Q_PROPERTY(QString healthyNote MEMBER healthyNote CONSTANT)
    Q_PROPERTY(QString link MEMBER link CONSTANT)
    Q_PROPERTY(QString linkSymbol MEMBER linkSymbol CONSTANT)
    Q_PROPERTY(bool testing MEMBER testing CONSTANT)
    Q_PROPERTY(QString speedNote MEMBER speedNote CONSTANT)
    Q_PROPERTY(QString testError MEMBER testError CONSTANT)
    Q_PROPERTY(bool trafficLoaded MEMBER trafficLoaded CONSTANT)
    Q_PROPERTY(bool trafficIdle MEMBER trafficIdle CONSTANT)

public:
    bool checking = false; ///< the link has not been read yet
    QString healthyNote;   ///< empty unless all is well
    QString link;          ///< the kind of link; empty before it is known
    QString linkSymbol;
    bool testing = false;
    QString speedNote; ///< when the last test was, or what a first one is good for
    QString testError; ///< empty for none
    bool trafficLoaded = false;
    bool trafficIdle = false; ///< loaded, and there is nothing in it

    bool operator==(const InternetLook&) const = default;
};

/// What is wrong with the connection, gravest first; nothing before the link is known. A test that
/// is an hour old does not count any more.
std::vector<Finding> findings(const InternetState& state, const AppName& appName, TimePoint now);

/// `healthy` says that there are no findings.
InternetLook internetLook(const InternetState& state, bool healthy, TimePoint now);

/// What is asked before a test: it says what one takes.
Question testQuestion(bool isMetered);

} // namespace pacelet
