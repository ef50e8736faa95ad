/// The button of a fix. What it shows comes from the view model, which also carries the fix out.
FixStyle {
    property string title

    text: title
    visible: title !== ""
}
