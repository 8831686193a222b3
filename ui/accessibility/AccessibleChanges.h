#pragma once

#include <QAccessible>
#include <QObject>

class QQuickItem;

namespace kova {

/// Emits accessibility events for item changes that Qt Quick does not report, and lets a list create the
/// entries outside its viewport, which assistive tools could not reach.
class AccessibleChanges : public QObject, private QAccessible::ActivationObserver {
    Q_OBJECT

public:
    ~AccessibleChanges() override { QAccessible::removeActivationObserver(this); }

    /// Observes the item until it is destroyed. Does nothing if it is observed already.
    static void observe(QQuickItem &item);

private:
    explicit AccessibleChanges(QQuickItem &item);

    Q_SLOT void reportValue();
    Q_SLOT void reportEnabled();
    Q_SLOT void reportHighlight();
    Q_SLOT void reportText();
    void reportOnChange(const char *property, const char *slot);
    void onItemCompleted();
    void accessibilityActiveChanged(bool active) override;

    QQuickItem &m_item;
    bool m_isDisabled = false; // as reported
    QString m_text;            // of a text field, as reported
};

} // namespace kova
