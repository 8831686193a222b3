#pragma once

#include "Fixture.h"
#include "MainWindow.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QTest>
#include <QWheelEvent>
#include <functional>

namespace kova {

/// The window on fake ports, with functions that find its items and send user input.
struct Window : Fixture {
    QQmlEngine engine;
    MainWindow window{engine,
                      {{QStringLiteral("home"), QVariant::fromValue(&home)},
                       {QStringLiteral("editor"), QVariant::fromValue(&editor)}}};

    /// Shows and activates the window, with `groups` groups.
    explicit Window(int groups = 0) {
        add(groups);
        window.show();
        activate();
    }

    // Lets Qt's renderer delete the textures of images.
    ~Window() {
        window.setSource({});
        window.releaseResources();
        window.grabWindow();
    }

    using Test = std::function<bool(const QQuickItem &)>;

    static Test inherits(const char *type) {
        return [type](const QQuickItem &item) { return item.inherits(type); };
    }
    static Test has(const char *property, const QVariant &value) {
        return [property, value](const QQuickItem &item) { return item.property(property) == value; };
    }

    /// Returns the visible descendants that pass a test, in painting order.
    static QList<QQuickItem *> all(const QQuickItem *below, const Test &test) {
        QList<QQuickItem *> found;
        for (QQuickItem *child : below->childItems()) {
            if (child->isVisible()) {
                if (test(*child)) {
                    found.append(child);
                }
                found.append(all(child, test));
            }
        }
        return found;
    }
    QList<QQuickItem *> all(const Test &test) { return all(window.contentItem(), test); }
    /// Returns the visible items of a QML type, such as "Stepper", or an object name, from the top.
    QList<QQuickItem *> all(const QByteArray &type) {
        QList<QQuickItem *> found = all([&type](const QQuickItem &item) {
            return QByteArray(item.metaObject()->className()).startsWith(type + "_QML") ||
                   item.objectName() == QString::fromLatin1(type);
        });
        std::stable_sort(found.begin(), found.end(), [](const QQuickItem *a, const QQuickItem *b) {
            return a->mapToScene({}).y() < b->mapToScene({}).y();
        });
        return found;
    }
    QQuickItem *item(const QByteArray &type, int n = 0) { return all(type).value(n); }
    bool shows(const QByteArray &type) { return item(type) != nullptr; }
    QString text(const QByteArray &type, int n = 0) {
        return shows(type) ? item(type, n)->property("text").toString() : QString();
    }
    QQuickItem *withText(const QString &text) { return all(has("text", text)).value(0); }

    /// Returns an item's rectangle in the window's coordinates.
    static QRectF rect(const QQuickItem *item) {
        return item ? item->mapRectToScene(QRectF({}, item->size())) : QRectF();
    }
    QRectF frame(const QByteArray &type, int n = 0) { return rect(item(type, n)); }
    /// Returns the time and the position of the first card below the header.
    QString visibleCard() {
        for (const QQuickItem *time : all("cardTime")) {
            if (rect(time).top() >= 48) {
                return time->property("text").toString() + QString::number(rect(time).top());
            }
        }
        return {};
    }

    void click(QPointF place, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(&window, button, {}, place.toPoint());
    }
    /// Clicks at a place given as fractions of the item's size.
    void click(const QQuickItem *item, QPointF place = {0.5, 0.5}) {
        QVERIFY(item);
        click(item->mapToScene({item->width() * place.x(), item->height() * place.y()}));
    }
    void click(const char *type, int n = 0) { click(item(type, n)); }
    void wheel(QPointF place, QPoint angle, Qt::KeyboardModifiers modifiers = {}, quint64 timestamp = 0) {
        QWheelEvent event(place, window.mapToGlobal(place), {}, angle, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        event.setTimestamp(timestamp);
        QCoreApplication::sendEvent(&window, &event);
    }
    void key(int key) { QTest::keyClick(&window, static_cast<Qt::Key>(key)); }
    void type(const QString &text) {
        for (const QChar character : text) {
            QTest::sendKeyEvent(QTest::Click, &window, Qt::Key_unknown, QString(character), Qt::NoModifier);
        }
    }

    void activate() {
        window.requestActivate(); // needed without a window manager
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }
    void showAlert(const AlarmGroup &group, qint64 index = 0) {
        ring(group, index);
        QTRY_VERIFY(shows("stopButton"));
    }
    void endAlert() {
        services.scheduler.endRinging();
        QTRY_VERIFY(!shows("stopButton"));
    }
    /// Opens the editor on a group.
    void edit(const AlarmGroup &group) {
        store.startEditing(group);
        QTRY_VERIFY(shows("editorPanel") && !shows("doubleClickGuard"));
    }
};

/// A window that is tall enough for the whole editor, with two groups, and functions that open its popups.
struct WholeWindow : Window {
    WholeWindow() {
        window.resize(460, 1500);
        AlarmGroup first = groupAt(7, QStringLiteral("朝"));
        first.intervalMinutes = 5;
        first.repeatDays = {5, 1};
        first.ttsEnabled = first.ttsLastEnabled = true;
        first.ttsMessage = QStringLiteral("一");
        first.ttsLastMessage = QStringLiteral("二");
        first.ttsVolume = 0.6F;
        add(first);
        AlarmGroup second = groupAt(18);
        second.alarmCount = 1;
        second.isEnabled = false;
        add(second);
        QTRY_COMPARE(all("cardSurface").size(), 2);
    }

    void selectFirst() {
        click("editButton");
        click("selectionMark");
    }
    void selectAll() {
        selectFirst();
        click("selectAllButton");
    }
    void askToDelete() {
        selectFirst();
        click("deleteButton");
        QTRY_VERIFY(shows("destructiveButton"));
    }
    void askMenu() { click(frame("cardTime").center(), Qt::RightButton); }
    void openMenu() {
        askMenu();
        QTRY_COMPARE(all("menuItem").size(), 3);
    }
    void openEditor(const std::function<void(AlarmGroup &)> &change = [](AlarmGroup &) {}) {
        AlarmGroup group = store.groups().constFirst();
        change(group);
        edit(group);
    }
    void openPicker() {
        openEditor();
        click("PopUpPicker", 1);
        QTRY_VERIFY(shows("pickerItem"));
    }
    void ringFirst() {
        services.clock.set({2026, 3, 2}, {6, 49, 59});
        services.runLoop.advance(std::chrono::seconds(1));
        QTRY_VERIFY(shows("stopButton"));
    }
};

using Act = std::function<void(WholeWindow &)>;

/// Opens the editor on the first group, after a change of the group.
inline Act edited(const std::function<void(AlarmGroup &)> &change = [](AlarmGroup &) {}) {
    return [change](WholeWindow &w) { w.openEditor(change); };
}

} // namespace kova
