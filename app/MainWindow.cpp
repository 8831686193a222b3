#include "MainWindow.h"

#include "drawing/Palette.h"

#include <QKeyEvent>

namespace kova {

MainWindow::MainWindow(QQmlEngine &engine, QVariantMap inputs) : ViewWindow(&engine) {
    setTitle(QStringLiteral("KOVA Alarm"));
    setColor(Palette::background()); // before the first frame
    setMinimumSize({420, 500});
    resize(440, 620);
    setResizeMode(SizeRootObjectToView);
    setPersistentSceneGraph(false);
    inputs.insert(QStringLiteral("width"), width()); // avoids a second layout pass
    inputs.insert(QStringLiteral("height"), height());
    setInitialProperties(inputs);
    setSource(QUrl(QStringLiteral("qrc:/qt-project.org/imports/Kova/window/ContentView.qml")));
}

void MainWindow::closeEvent(QCloseEvent *event) {
    Q_EMIT closed();
    if (m_hidesOnClose) {
        ViewWindow::closeEvent(event);
    } else {
        event->ignore();
        showMinimized();
    }
}

void MainWindow::keyPressEvent(QKeyEvent *event) {
    if (event->keyCombination() == (Qt::CTRL | Qt::Key_Q)) {
        Q_EMIT quit();
    } else {
        ViewWindow::keyPressEvent(event);
    }
}

} // namespace kova
