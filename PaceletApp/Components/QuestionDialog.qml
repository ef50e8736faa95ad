import QtQuick
import Pacelet

/// Asks what its model asks.
AlertDialog {
    id: dialog

    required property QuestionModel question

    // A sheet that opens later stays behind it.
    z: 1
    visible: question.open
    title: question.title
    message: question.message
    confirmText: question.confirmText
    cancelText: question.cancelText
    destructive: question.destructive
    paragraphLines: question.paragraphLines
    onConfirmed: question.confirm()
    onCancelled: question.cancel()
}
