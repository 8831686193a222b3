#include "RandomUser.h"

#include <QApplication>
#include <QRegularExpression>
#include <QScreen>

using namespace kova;
using namespace Qt::StringLiterals;

namespace {

QImage onScreen(const QWindow &window) {
    return window.screen()->grabWindow(window.winId()).toImage().convertToFormat(QImage::Format_RGB32);
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
    if (left == repainted && !left.isNull()) {
        return {};
    }
    left.save(QDir::temp().filePath(u"play-left.png"_s));
    repainted.save(QDir::temp().filePath(u"play-repainted.png"_s));
    return u"the repaint differs, see play-repainted.png in %1"_s.arg(QDir::tempPath());
}

QQuickItem *topPanel(Window &w) {
    const QList<QQuickItem *> panels = w.all([](const QQuickItem &item) {
        const QObject *const popup = item.inherits("QQuickPopupItem") ? item.parent() : nullptr;
        return popup && popup->property("focus").toBool() && popup->property("opened").toBool();
    });
    return panels.isEmpty() ? nullptr : panels.constLast();
}

// Checks that the focused item is visible and in front of all panels.
QString focusFault(Window &w) {
    QQuickItem *const focus = w.window.activeFocusItem();
    if (!focus || focus == w.window.contentItem()) {
        return {};
    }
    const QString name = QString::fromLatin1(focus->metaObject()->className());
    if (!focus->isVisible() || !focus->isEnabled()) {
        return u"the focus is on a hidden %1"_s.arg(name);
    }
    QQuickItem *const panel = topPanel(w);
    if (panel && panel != focus && !panel->isAncestorOf(focus)) {
        return u"the focus is behind a panel, on %1"_s.arg(name);
    }
    return {};
}

} // namespace

class RandomPlayTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void randomActionsLeaveNoFault_data() {
        QTest::addColumn<quint32>("seed");
        const int first = qEnvironmentVariable("KOVA_PLAY_SEED", u"1"_s).toInt();
        const QString seeds = qEnvironmentVariableIsSet("KOVA_THOROUGH") ? u"20"_s : u"4"_s;
        const int count = qEnvironmentVariable("KOVA_PLAY_SEEDS", seeds).toInt();
        for (int seed = first; seed < first + count; ++seed) {
            QTest::addRow("%d", seed) << quint32(seed);
        }
    }
    void randomActionsLeaveNoFault() {
        QFETCH(quint32, seed);
        Window w;
        RandomUser user(w, seed);
        QTest::failOnWarning(QRegularExpression(u"."_s));
        QString fault;
        for (int i = 0; i < 500 && fault.isEmpty() && !QTest::currentTestFailed(); ++i) {
            user.step();
            fault = focusFault(w);
            if (fault.isEmpty() && i % 5 == 0) {
                fault = paintingFault(w);
            }
        }
        const QStringList last = user.actions().mid(user.actions().size() - 15);
        QVERIFY2(
            fault.isEmpty() && !QTest::currentTestFailed(),
            qPrintable(
                u"%1 after %2 steps: … %3"_s.arg(fault).arg(user.actions().size()).arg(last.join(u", "_s))));
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
