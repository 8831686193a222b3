import Kova

// Asks before the selected groups are deleted.
ConfirmationAlert {
    id: confirmation

    required property HomeSelection selection

    destructiveText: "削除"
    message: selection.deleteConfirmText
    title: "削除確認"

    onAgree: selection.confirmDeletion()
    onCancel: selection.cancelDeletion()
}
