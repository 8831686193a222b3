#include "MainWindow.h"

#include "hiddenMemory.h"

#include <QKeyEvent>
#include <QQmlEngine>
#include <QTimer>

namespace kova {

namespace {
const QUrl rootView(QStringLiteral("qrc:/qt-project.org/imports/Kova/views/ContentView.qml"));
const QColor backgroundColor = QColor::fromRgbF(0.05F, 0.11F, 0.17F); // until the first frame
} // namespace

MainWindow::MainWindow(const QVariantMap &inputs) : m_inputs(inputs) {
    setTitle(QStringLiteral("KOVA Alarm"));
    setColor(backgroundColor);
    setMinimumSize({420, 500});
    resize(440, 620);
    setResizeMode(SizeRootObjectToView);
    setPersistentSceneGraph(false);
    load();
}

void MainWindow::showEvent(QShowEvent *event) {
    load();
    QQuickView::showEvent(event);
}

// Not at once: the content may be what is hiding the window.
void MainWindow::hideEvent(QHideEvent *event) {
    QQuickView::hideEvent(event);
    QTimer::singleShot(0, this, [this] {
        if (!isVisible()) {
            unload();
        }
    });
}

void MainWindow::keyPressEvent(QKeyEvent *event) {
    if (event->keyCombination() == (Qt::CTRL | Qt::Key_Q)) {
        Q_EMIT quit();
    } else {
        QQuickView::keyPressEvent(event);
    }
}

void MainWindow::load() {
    if (source().isEmpty()) {
        setInitialProperties(m_inputs);
        setSource(rootView);
    }
}

void MainWindow::unload() {
    setSource({});
    releaseResources();
    engine()->collectGarbage();
    engine()->trimComponentCache();
    releaseHiddenMemory();
}

} // namespace kova
