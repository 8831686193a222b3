#include "RandomUser.h"

#include <QApplication>
#include <QScreen>

using namespace kova;

namespace {

QStringList messages;

void keepMessage(QtMsgType, const QMessageLogContext &, const QString &message) {
    messages << message;
}

int fromEnvironment(const char *name, int otherwise) {
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue(name, &isNumber);
    return isNumber ? number : otherwise;
}

QImage onScreen(const QWindow &window) {
    return window.screen()->grabWindow(window.winId()).toImage().convertToFormat(QImage::Format_RGB32);
}

QRect difference(const QImage &a, const QImage &b) {
    QRect differing;
    for (int y = 0; y < a.height(); ++y) {
        const auto *lineA = reinterpret_cast<const QRgb *>(a.constScanLine(y));
        const auto *lineB = reinterpret_cast<const QRgb *>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x) {
            if (lineA[x] != lineB[x]) {
                differing |= QRect(x, y, 1, 1);
            }
        }
    }
    return differing;
}

// Compares the result of incremental repaints with a complete repaint of the same state.
QString paintingFault(Window &w) {
    paint(w.window);
    const QImage left = onScreen(w.window);
    for (const qreal x : {1e-4, 0.0}) { // moving everything repaints it
        w.window.contentItem()->setX(x);
        paint(w.window);
    }
    const QImage repainted = onScreen(w.window);
    if (left.size() != repainted.size() || left.isNull()) {
        return QStringLiteral("no picture");
    }
    const QRect differing = difference(left, repainted);
    if (differing.isEmpty()) {
        return {};
    }
    left.save(QDir::temp().filePath(QStringLiteral("play-left.png")));
    repainted.save(QDir::temp().filePath(QStringLiteral("play-repainted.png")));
    QString text;
    QDebug(&text) << "the repaints differ in" << differing;
    return text;
}

QQuickItem *topPanel(Window &w) {
    QQuickItem *top = nullptr;
    for (QQuickItem *layer : w.window.contentItem()->childItems()) {
        for (QQuickItem *item : layer->childItems()) {
            const QObject *const popup = item->inherits("QQuickPopupItem") ? item->parent() : nullptr;
            if (popup && popup->property("focus").toBool() && popup->property("opened").toBool()) {
                top = item;
            }
        }
    }
    return top;
}

// Checks that the focused item is visible, in front of all panels, and in the viewport if the keyboard has
// moved it.
QString focusFault(Window &w, bool moved) {
    QQuickItem *const focus = w.window.activeFocusItem();
    if (!focus || focus == w.window.contentItem()) {
        return {};
    }
    const QString name = QString::fromLatin1(focus->metaObject()->className());
    if (!focus->isVisible() || !focus->isEnabled()) {
        return QStringLiteral("the focus is on a hidden %1").arg(name);
    }
    QQuickItem *const panel = topPanel(w);
    if (panel && panel != focus && !panel->isAncestorOf(focus)) {
        return QStringLiteral("the focus is behind a panel, on %1").arg(name);
    }
    const QRectF frame = focus->mapRectToScene({{}, focus->size()});
    for (QQuickItem *item = focus->parentItem(); moved && item; item = item->parentItem()) {
        if ((item->clip() || !item->parentItem()) &&
            !item->mapRectToScene({{}, item->size()}).intersects(frame)) {
            return QStringLiteral("the focus is outside the viewport, on %1").arg(name);
        }
    }
    return {};
}

} // namespace

class RandomPlayTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void randomActionsLeaveNoFault_data() {
        QTest::addColumn<quint32>("seed");
        const int first = fromEnvironment("KOVA_PLAY_SEED", 1);
        const int count =
            fromEnvironment("KOVA_PLAY_SEEDS", qEnvironmentVariableIsSet("KOVA_THOROUGH") ? 20 : 4);
        for (int seed = first; seed < first + count; ++seed) {
            QTest::addRow("%d", seed) << quint32(seed);
        }
    }
    void randomActionsLeaveNoFault() {
        QFETCH(quint32, seed);
        Window w;
        RandomUser user(w, seed);
        messages.clear();
        const QtMessageHandler before = qInstallMessageHandler(&keepMessage);
        QString fault;
        for (int i = 0; i < 500 && fault.isEmpty(); ++i) {
            user.step();
            fault = focusFault(w, user.movedFocus());
            if (fault.isEmpty() && i % 5 == 0) {
                fault = paintingFault(w);
            }
            if (!messages.isEmpty()) {
                fault = messages.join(u'\n');
            }
        }
        qInstallMessageHandler(before);
        const QStringList last = user.actions().mid(user.actions().size() - 15);
        QVERIFY2(fault.isEmpty(), qPrintable(QStringLiteral("%1 after %2 steps: … %3")
                                                 .arg(fault)
                                                 .arg(user.actions().size())
                                                 .arg(last.join(QStringLiteral(", ")))));
    }
};

int main(int argc, char *argv[]) {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QApplication application(argc, argv);
    QApplication::setCursorFlashTime(0);
    RandomPlayTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "RandomPlayTest.moc"
