#include "MainWindow.h"

#include "hiddenMemory.h"

#include <QKeyEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTextLayout>
#include <QTimer>

namespace kova {

namespace {
const QUrl rootView(QStringLiteral("qrc:/qt-project.org/imports/Kova/views/ContentView.qml"));
const QColor backgroundColor = QColor::fromRgbF(0.05F, 0.11F, 0.17F); // until the first frame

// Finds and opens the fonts of the first frame.
void warmUpFonts() {
    constexpr std::pair<int, QFont::Weight> fonts[] = {
        {10, QFont::Normal}, {11, QFont::Normal}, {13, QFont::Normal}, {20, QFont::Bold}, {32, QFont::Bold}};
    for (const auto &[pixelSize, weight] : fonts) {
        QFont font;
        font.setPixelSize(pixelSize);
        font.setWeight(weight);
        QTextLayout layout(weight == QFont::Bold ? QStringLiteral("7:00") : QStringLiteral("編集 7"), font);
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
    }
}

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

// The views are read by a thread of the engine's; meanwhile this one sees to the fonts.
void MainWindow::load() {
    if (source().isEmpty()) {
        const QQmlComponent reading(engine(), rootView, QQmlComponent::Asynchronous);
        warmUpFonts();
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
