#pragma once

#include "window/ViewWindow.h"

#include <QQuickItem>
#include <QTest>
#include <QWheelEvent>
#include <functional>

namespace kova {

/// A view of the module in its own window, with functions that find its items and send user input.
class ViewFixture {
public:
    /// Shows a view, given by its path in the module such as "home/HomeView".
    ViewFixture(const QString &view, const QVariantMap &inputs, QSize size) {
        m_view.setResizeMode(QQuickView::SizeRootObjectToView);
        m_view.setInitialProperties(inputs);
        m_view.resize(size);
        m_view.setSource(QUrl(QStringLiteral("qrc:/qt-project.org/imports/Kova/%1.qml").arg(view)));
        m_view.show();
        m_view.requestActivate();
        m_isShown = QTest::qWaitForWindowActive(&m_view);
    }

    bool isShown() const { return m_isShown && m_view.rootObject(); }
    ViewWindow &window() { return m_view; }
    QQuickItem *root() { return m_view.rootObject(); }

    using Test = std::function<bool(QQuickItem &)>;

    /// Returns the visible descendants that pass a test, in painting order.
    static QList<QQuickItem *> all(QQuickItem *below, const Test &test) {
        QList<QQuickItem *> found;
        const QList<QQuickItem *> children = below->childItems();
        for (QQuickItem *child : children) {
            if (child->isVisible()) {
                if (test(*child)) {
                    found.append(child);
                }
                found.append(all(child, test));
            }
        }
        return found;
    }
    QQuickItem *first(const Test &test) {
        const QList<QQuickItem *> found = all(m_view.contentItem(), test);
        return found.isEmpty() ? nullptr : found.constFirst();
    }

    /// Tests for a QML type, such as "Stepper".
    static Test isA(const QByteArray &type) {
        return [type](QQuickItem &item) {
            return QByteArray(item.metaObject()->className()).startsWith(type + "_QML");
        };
    }
    static Test has(const char *property, const QVariant &value) {
        return [property, value](QQuickItem &item) { return item.property(property) == value; };
    }
    static Test both(const Test &a, const Test &b) {
        return [a, b](QQuickItem &item) { return a(item) && b(item); };
    }
    QQuickItem *ofType(const QByteArray &type, int index = 0) {
        return all(m_view.contentItem(), isA(type)).value(index);
    }
    QQuickItem *text(const QString &text) { return first(has("text", text)); }

    /// Returns an item's rectangle in the window's coordinates.
    static QRectF rect(const QQuickItem *item) {
        return item->mapRectToScene({0, 0, item->width(), item->height()});
    }

    void click(const QQuickItem *item) { click(rect(item).center()); }
    void click(QPointF point) { QTest::mouseClick(&m_view, Qt::LeftButton, {}, point.toPoint()); }
    void wheel(QPointF point, QPoint angle, Qt::KeyboardModifiers modifiers = {}) {
        QWheelEvent event(point, m_view.mapToGlobal(point), {}, angle, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&m_view, &event);
    }
    void key(int key) { QTest::keyClick(&m_view, static_cast<Qt::Key>(key)); }
    void type(const QString &text) {
        for (const QChar character : text) {
            QTest::sendKeyEvent(QTest::Click, &m_view, Qt::Key_unknown, QString(character), Qt::NoModifier);
        }
    }

private:
    ViewWindow m_view;
    bool m_isShown = false;
};

} // namespace kova
