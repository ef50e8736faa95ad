import QtQuick
import Pacelet

/// The content of the sheet, with its margins.
FocusScope {
    id: onboarding

    required property OnboardingModel model

    signal done

    implicitWidth: 520
    implicitHeight: 400
}
