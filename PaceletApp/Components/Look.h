#pragma once

#include "Core/Diagnosis/Finding.h"
#include "Core/Knowledge/FixID.h"
#include "Core/Knowledge/Verdict.h"
#include "PaceletApp/Components/Tone.h"
#include "PaceletApp/Models/KeyedListModel.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <string>
#include <vector>

namespace pacelet {

/// What a pill shows and says. An empty text means no pill at all.
struct PillLook {
    Q_GADGET
    QML_VALUE_TYPE(pillLook)
    Q_PROPERTY(QString text MEMBER text CONSTANT)
    Q_PROPERTY(QString symbol MEMBER symbol CONSTANT)
    Q_PROPERTY(pacelet::Tones::Tone tone MEMBER tone CONSTANT)
    Q_PROPERTY(QString accessibleName MEMBER accessibleName CONSTANT)

public:
    QString text;
    QString symbol; ///< empty for none
    Tone tone = Tone::None;
    QString accessibleName;

    bool operator==(const PillLook&) const = default;
};

/// What the button of a fix shows. An empty title means no button at all.
struct FixLook {
    Q_GADGET
    QML_VALUE_TYPE(fixLook)
    Q_PROPERTY(QString fix MEMBER fix CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString symbol MEMBER symbol CONSTANT)
    Q_PROPERTY(bool purple MEMBER purple CONSTANT)

public:
    QString fix; ///< raw value, to hand back when the button is pressed
    QString title;
    QString symbol;
    bool purple = false; ///< the fix acts on something that is using the machine up right now

    std::string key() const { return fix.toStdString(); }
    /// look: all of it.
    static std::vector<ListRole<FixLook>> roles();

    bool operator==(const FixLook&) const = default;
};

PillLook lookOf(Verdict verdict);
PillLook lookOf(Status status);
/// `group` may be null.
FixLook lookOf(FixID fix, const ProcessGroup* group);

/// The looks of verdicts and states for QML, by their raw values.
class Looks : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Empty for a text that is no verdict's raw value.
    Q_INVOKABLE pacelet::PillLook verdict(const QString& rawValue) const;
    /// Empty for a text that is no status's raw value.
    Q_INVOKABLE pacelet::PillLook status(const QString& rawValue) const;
};

/// What stands where a finding would, while there is none.
QString quietHeadline();

/// "quiet", "busy" or "struggling".
QString rawValue(Status status);

} // namespace pacelet
