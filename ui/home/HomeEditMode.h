#pragma once

#include <QObject>
#include <QSet>
#include <QUuid>
#include <qqmlregistration.h>

namespace kova {

class AlarmViewModel;
class SoundPlayer;

/// The edit mode of the home list: the selected groups and their deletion after a confirmation. Main thread.
class HomeEditMode : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("created by the home screen")
    Q_PROPERTY(bool editMode READ editMode NOTIFY changed)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY changed)
    Q_PROPERTY(bool showDeleteConfirm READ showDeleteConfirm NOTIFY changed)
    Q_PROPERTY(QString editModeText READ editModeText NOTIFY changed)
    Q_PROPERTY(QString selectAllText READ selectAllText NOTIFY changed)
    Q_PROPERTY(QString deleteText READ deleteText NOTIFY changed)
    Q_PROPERTY(QString deleteConfirmText READ deleteConfirmText NOTIFY changed)

public:
    /// Both must outlive the edit mode.
    HomeEditMode(AlarmViewModel &store, SoundPlayer &soundPlayer);

    bool editMode() const { return m_editMode; }
    const QSet<QUuid> &selected() const { return m_selected; }
    bool contains(const QUuid &id) const { return m_selected.contains(id); }
    bool isEmpty() const { return m_selected.isEmpty(); }
    bool showDeleteConfirm() const { return m_showDeleteConfirm; }

    QString editModeText() const;
    QString selectAllText() const;
    QString deleteText() const;
    QString deleteConfirmText() const;

    /// Leaving the edit mode clears the selection and stops a preview.
    Q_INVOKABLE void toggleEditMode();
    Q_INVOKABLE void toggle(const QString &groupId);
    Q_INVOKABLE void toggleAll();

    Q_INVOKABLE void askToDelete();
    Q_INVOKABLE void cancelDeletion();
    Q_INVOKABLE void confirmDeletion();

Q_SIGNALS:
    void changed();         ///< any property
    void selectedChanged(); ///< emitted before it when the selected groups change

private:
    void select(const QSet<QUuid> &ids);
    bool isAllSelected() const;

    AlarmViewModel &m_store;
    SoundPlayer &m_soundPlayer;
    bool m_editMode = false;
    QSet<QUuid> m_selected;
    bool m_showDeleteConfirm = false;
};

} // namespace kova
