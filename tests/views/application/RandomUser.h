#pragma once

#include "WindowFixture.h"

#include <QAnimationDriver>
#include <QClipboard>
#include <QQmlIncubationController>
#include <QRandomGenerator>
#include <QScreen>

namespace kova {

/// Advances animations only when the test lets time pass.
class ManualAnimationDriver : public QAnimationDriver {
public:
    ManualAnimationDriver() { install(); }
    ~ManualAnimationDriver() override { uninstall(); }
    Q_DISABLE_COPY_MOVE(ManualAnimationDriver)

    qint64 elapsed() const override { return m_now; }
    void pass(qint64 milliseconds) {
        m_now += milliseconds;
        advance();
    }

private:
    qint64 m_now = 0;
};

/// Lays out and paints pending changes.
inline void paint(QWindow &window) {
    for (int i = 0; i < 3; ++i) { // a layout may request another
        QEvent update(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&window, &update);
    }
}

/// Performs random user actions in a window, reproducible by their seed, and records them.
class RandomUser {
public:
    RandomUser(Window &w, quint32 seed) : m_w(w), m_random(seed) {
        QGuiApplication::clipboard()->clear();
        QCursor::setPos(w.window.screen()->geometry().bottomRight()); // the real pointer stays outside
        addGroups();
        QTest::mouseMove(&w.window, {0, 0});
        settle();
    }

    void step() {
        using Step = void (RandomUser::*)();
        static const QList<Step> steps{
            &RandomUser::hover, &RandomUser::hover,    &RandomUser::click,   &RandomUser::click,
            &RandomUser::click, &RandomUser::click,    &RandomUser::click,   &RandomUser::drag,
            &RandomUser::wheel, &RandomUser::wheel,    &RandomUser::key,     &RandomUser::key,
            &RandomUser::key,   &RandomUser::key,      &RandomUser::askMenu, &RandomUser::rest,
            &RandomUser::ring,  &RandomUser::resize,   &RandomUser::hide,    &RandomUser::compose,
            &RandomUser::cease, &RandomUser::openCard, &RandomUser::wheel,   &RandomUser::clickText};
        (this->*oneOf(steps))();
        m_time.pass(m_random.bounded(150));
        settle();
    }

    const QStringList &actions() const { return m_actions; }

private:
    // Completes what takes Qt or the display real time, so that every run of a seed is the same.
    void settle() {
        QVERIFY(QTest::qWaitFor([this] {
            return m_w.window.isExposed() && m_w.window.contentItem()->size() == m_w.window.size();
        }));
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        paint(m_w.window);
        QQmlIncubationController *const incubation = m_w.window.incubationController();
        while (incubation->incubatingObjectCount() > 0) {
            incubation->incubateFor(100);
        }
        for (QObject *tip : tips()) { // tooltips do not open by a timer
            if (!tip->property("opened").toBool()) {
                tip->setProperty("visible", false);
            }
        }
    }
    QList<QObject *> tips() {
        QList<QObject *> found = m_w.window.findChildren<QObject *>();
        found.removeIf([](const QObject *object) { return !object->inherits("QQuickToolTip"); });
        return found;
    }
    void note(const QString &what) { m_actions << what; }
    void note(const char *what, QPoint place) {
        note(QStringLiteral("%1 %2 %3").arg(QLatin1StringView(what)).arg(place.x()).arg(place.y()));
    }
    template <typename T> T oneOf(const QList<T> &choices) {
        return choices.at(m_random.bounded(int(choices.size())));
    }

    void addGroups() {
        const QStringList labels{{},
                                 QStringLiteral("朝"),
                                 QStringLiteral("استيقظ الآن"),
                                 QStringLiteral("一行目\n二行目\n三行目"),
                                 QString(300, u'長'),
                                 QStringLiteral("Wake up & <b>go</b> to the early train at the station")};
        for (quint32 i = m_random.bounded(12U); i > 0; --i) {
            AlarmGroup group = groupAt(m_random.bounded(24), oneOf(labels));
            group.alarmCount = oneOf<qint64>({1, 2, 8, 20});
            group.isEnabled = m_random.bounded(2) == 1;
            group.ttsEnabled = m_random.bounded(2) == 1;
            m_w.add(group);
        }
    }

    // Returns the centres of the visible controls, or of the text fields.
    QList<QPoint> controls(bool textsOnly) {
        QList<QPoint> places;
        const QList<QQuickItem *> items = m_w.window.contentItem()->findChildren<QQuickItem *>();
        for (QQuickItem *item : items) {
            const bool fits =
                item->inherits("QQuickTextInput") || (!textsOnly && item->inherits("QQuickControl"));
            const QPoint center = item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
            if (fits && item->isVisible() && QRect({}, m_w.window.size()).contains(center)) {
                places << center;
            }
        }
        std::sort(places.begin(), places.end(),
                  [](QPoint a, QPoint b) { return a.y() != b.y() ? a.y() < b.y() : a.x() < b.x(); });
        return places;
    }
    QPoint place(bool onText = false) {
        const QList<QPoint> places = controls(onText);
        if (places.isEmpty() || m_random.bounded(4) == 0) {
            return {m_random.bounded(m_w.window.width()), m_random.bounded(m_w.window.height())};
        }
        return oneOf(places);
    }

    void hover() {
        const QPoint to = place();
        note("hover", to);
        QTest::mouseMove(&m_w.window, to);
    }
    void clickAt(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
        note("click", at);
        QTest::mouseMove(&m_w.window, at);
        QTest::mousePress(&m_w.window, button, {}, at);
        m_time.pass(m_random.bounded(60));
        QTest::mouseRelease(&m_w.window, button, {}, at);
    }
    void click() { clickAt(place()); }
    void clickText() { clickAt(place(true)); }
    void askMenu() { clickAt(place(), Qt::RightButton); }
    void drag() {
        const QPoint from = place();
        const QPoint to = place();
        note("drag", from);
        QTest::mousePress(&m_w.window, Qt::LeftButton, {}, from);
        for (int i = 1; i <= 4; ++i) {
            QTest::mouseMove(&m_w.window, from + (to - from) * i / 4);
        }
        QTest::mouseRelease(&m_w.window, Qt::LeftButton, {}, to);
    }
    void wheel() {
        const QPoint at = place();
        const QPoint turn = oneOf<QPoint>({{0, -120}, {0, -120}, {0, 120}, {0, -720}, {0, 720}, {-120, 0}});
        note("wheel", at);
        m_w.wheel(at, turn, {}, quint64(m_time.elapsed()));
    }
    void key() {
        const Qt::Key key =
            oneOf<Qt::Key>({Qt::Key_Tab,      Qt::Key_Tab,  Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Up,
                            Qt::Key_Down,     Qt::Key_Left, Qt::Key_Right,  Qt::Key_Space,   Qt::Key_Return,
                            Qt::Key_Home,     Qt::Key_End,  Qt::Key_PageUp, Qt::Key_Escape,  Qt::Key_Menu,
                            Qt::Key_PageDown, Qt::Key_7,    Qt::Key_A,      Qt::Key_Delete,  Qt::Key_Down});
        note(QVariant::fromValue(key).toString());
        QTest::keyClick(&m_w.window, key);
    }
    // Lets the pointer rest long enough for a tooltip.
    void rest() {
        note(QStringLiteral("rest"));
        for (QObject *tip : tips()) {
            tip->setProperty("delay", 0);
            tip->setProperty("timeout", -1);
            QMetaObject::invokeMethod(tip, "open");
        }
    }
    void ring() {
        if (!m_w.store.groups().isEmpty() && m_random.bounded(3) == 0) {
            note(QStringLiteral("ring"));
            m_w.ring(oneOf(m_w.store.groups()), 0);
        }
    }
    void cease() {
        note(QStringLiteral("cease"));
        m_w.services.scheduler.endRinging();
    }
    void resize() {
        const QSize size = oneOf<QSize>({{440, 620}, {420, 500}, {700, 560}, {900, 800}});
        note(QStringLiteral("resize %1").arg(size.width()));
        m_w.window.resize(size);
    }
    void hide() {
        if (m_random.bounded(6) == 0) {
            note(QStringLiteral("hide and show"));
            m_w.window.hide();
            QCoreApplication::processEvents();
            m_w.window.show();
            m_w.activate();
        }
    }
    void compose() {
        if (QQuickItem *const focus = m_w.window.activeFocusItem();
            focus && focus->inherits("QQuickTextInput")) {
            note(QStringLiteral("compose"));
            QInputMethodEvent composing(oneOf<QString>({{}, QStringLiteral("あさ")}), {});
            composing.setCommitString(oneOf<QString>({{}, {}, QStringLiteral("朝の")}));
            QCoreApplication::sendEvent(focus, &composing);
        }
    }
    void openCard() {
        if (const QList<QQuickItem *> cards = m_w.all("cardTime"); !cards.isEmpty()) {
            const QPoint at = oneOf(cards)->mapToScene({10, 10}).toPoint();
            clickAt({at.x(), std::clamp(at.y(), 60, m_w.window.height() - 1)});
        }
    }

    Window &m_w;
    QRandomGenerator m_random;
    ManualAnimationDriver m_time;
    QStringList m_actions;
};

} // namespace kova
