#pragma once

#include <QObject>

class QQuickItem;

namespace kova {

/// Tells assistive tools of an item's changes of which the toolkit does not tell by itself.
class AccessibleChanges : public QObject {
    Q_OBJECT

public:
    /// Until the item goes.
    static void tellOf(QQuickItem &item);

private:
    explicit AccessibleChanges(QQuickItem &item);

    Q_SLOT void tellValue();
    Q_SLOT void tellUse();
    Q_SLOT void tellHighlight();
    Q_SLOT void tellText();
    void followPanels();
    void follow(const char *property, const char *slot);

    QQuickItem &m_item;
    bool m_isDisabled = false; // as told
    QString m_text;            // of a text field, as told
};

} // namespace kova
