import QtQuick
import Pacelet

/// Asks what its model asks.
AlertDialog {
    id: dialog

    required property QuestionModel question

    visible: question.open
    title: question.title
    message: question.message
    confirmText: question.confirmText
    cancelText: question.cancelText
    destructive: question.destructive
    onConfirmed: question.confirm()
    onCancelled: question.cancel()
}
