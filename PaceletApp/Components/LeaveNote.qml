/// A short reassurance in place of a button.
ElidedText {
    font: Theme.note
    color: Theme.text3
}
