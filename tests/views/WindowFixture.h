#pragma once

#include "FakeFileChooser.h"
#include "HomeFixture.h"
#include "MainWindow.h"
#include "editor/AlarmEditor.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QTest>

namespace kova {

inline QList<QQuickItem *> itemsBelow(QQuickItem *root, const QString &name) {
    QList<QQuickItem *> found;
    for (QQuickItem *child : root->childItems()) {
        if (child->objectName() == name && child->isVisible()) {
            found << child;
        }
        found << itemsBelow(child, name);
    }
    std::sort(found.begin(), found.end(),
              [](QQuickItem *a, QQuickItem *b) { return a->mapToScene({}).y() < b->mapToScene({}).y(); });
    return found;
}

/// The window on fake ports, operated by mouse and key events.
struct Window : HomeFixture {
    FakeFileChooser fileChooser;
    AlarmEditor editor{
        {store, services.soundPlayer, services.ttsPlayer, fileChooser, services.bookmarks, services.log}};
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

    QList<QQuickItem *> all(const char *name) {
        return itemsBelow(window.contentItem(), QString::fromLatin1(name));
    }
    /// Returns the n-th visible item of that name from the top.
    QQuickItem *item(const char *name, int n = 0) { return all(name).value(n); }
    bool shows(const char *name) { return item(name) != nullptr; }
    /// Returns the time and the position of the n-th card below the header.
    QString visibleCard(int n = 0) {
        QStringList times;
        for (const QQuickItem *time : all("cardTime")) {
            if (rect(time).top() >= 48) {
                times << QStringLiteral("%1 at %2")
                             .arg(time->property("text").toString())
                             .arg(rect(time).top());
            }
        }
        return times.value(n);
    }
    QString text(const char *name, int n = 0) {
        return shows(name) ? item(name, n)->property("text").toString() : QString();
    }
    QRectF frame(const char *name, int n = 0) { return rect(item(name, n)); }
    static QRectF rect(const QQuickItem *item) {
        return item ? item->mapRectToScene(QRectF({}, item->size())) : QRectF();
    }
    void click(QPointF place, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(&window, button, {}, place.toPoint());
    }
    void click(const char *name, int n = 0) { click(frame(name, n).center()); }
    void key(Qt::Key key) { QTest::keyClick(&window, key); }
    void focusFirstCard(bool inEditMode) {
        if (inEditMode) {
            click("editButton");
        }
        item(inEditMode ? "selectionMark" : "cardSurface")->forceActiveFocus();
    }
    void activate() {
        window.requestActivate(); // needed without a window manager
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }
};

} // namespace kova
