#include "MainWindow.h"

#include "Palette.h"
#include "hiddenMemory.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTextLayout>
#include <QTimer>

namespace kova {

namespace {
const QUrl rootView(QStringLiteral("qrc:/qt-project.org/imports/Kova/views/ContentView.qml"));

// The thread that reads the views needs this one at every module that it meets.
void helpReading() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::User);
}

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
        helpReading();
    }
}

} // namespace

std::unique_ptr<QQmlComponent> MainWindow::readViews(QQmlEngine &engine) {
    // The first modules are small. Read at once, they don't keep the thread from the large ones behind them.
    QQmlComponent(&engine).setData("import QtQml\nQtObject {}", QUrl());
    return std::make_unique<QQmlComponent>(&engine, rootView, QQmlComponent::Asynchronous);
}

MainWindow::MainWindow(QQmlEngine &engine, const QVariantMap &inputs)
    : QQuickView(&engine, nullptr),
      m_inputs(inputs) {
    setTitle(QStringLiteral("KOVA Alarm"));
    setColor(Palette::background()); // until the first frame
    setMinimumSize({420, 500});
    resize(440, 620);
    setResizeMode(SizeRootObjectToView);
    setPersistentSceneGraph(false);
    load();
}

void MainWindow::closeEvent(QCloseEvent *event) {
    Q_EMIT closed();
    if (m_hidesOnClose) {
        QQuickView::closeEvent(event);
    } else {
        event->ignore();
        showMinimized();
    }
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
    if (!source().isEmpty()) {
        return;
    }
    helpReading();
    const QQmlComponent reading(engine(), rootView, QQmlComponent::Asynchronous);
    warmUpFonts(); // meanwhile
    QVariantMap inputs = m_inputs;
    inputs.insert(QStringLiteral("width"), width()); // lest all is laid out twice
    inputs.insert(QStringLiteral("height"), height());
    setInitialProperties(inputs);
    setSource(rootView);
}

void MainWindow::unload() {
    setSource({});
    releaseResources();
    engine()->collectGarbage();
    engine()->trimComponentCache();
    releaseHiddenMemory();
}

} // namespace kova
