#include "DesktopPlatform.h"

#include "FreedesktopNotificationCenter.h"
#include "Portal.h"
#include "PortalNotificationCenter.h"
#include "SingleInstance.h"

#include <QApplication>
#include <QIcon>
#include <QStyleHints>
#include <QTimer>
#include <QtDebug>

#include <malloc.h>

namespace kova {

namespace {

constexpr std::chrono::milliseconds postShowDelay{200};
constexpr std::chrono::seconds postStartDelay{2};

QIcon windowIcon() {
    const QIcon themeIcon = QIcon::fromTheme(QStringLiteral("jp.kova.Alarm"));
    QIcon icon;
    for (const int size : {16, 32, 48, 64}) {
        icon.addPixmap(themeIcon.pixmap(size));
    }
    return icon;
}

// On Wayland, Qt may draw the title bar; its colours are those of the scheme or, in earlier versions, the
// palette.
void requestDarkTitleBar(const QPalette &palette) {
    if (QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
        QGuiApplication::styleHints()->setColorScheme(Qt::ColorScheme::Dark);
#endif
        QGuiApplication::setPalette(palette);
    }
}

} // namespace

DesktopPlatform::DesktopPlatform(SingleInstance &instance) : m_instance(instance) {
    QObject::connect(&instance, &SingleInstance::activated, &m_application,
                     &DesktopApplication::showMainWindow);
    if (isSandboxed()) {
        m_notificationCenter = std::make_unique<PortalNotificationCenter>(m_buses, m_application);
    } else {
        m_notificationCenter = std::make_unique<FreedesktopNotificationCenter>(m_buses, m_application);
    }
}

Platform DesktopPlatform::ports() {
    return {
        .application = m_application,
        .audioPlayers = m_audioPlayers,
        .bookmarks = m_bookmarks,
        .clock = m_clock,
        .fileChooser = m_fileChooser,
        .listStorage = m_listFile,
        .log = m_log,
        .notificationCenter = *m_notificationCenter,
        .powerAssertions = m_powerAssertions,
        .resources = m_resources,
        .runLoop = m_runLoop,
        .speechSynthesizers = m_speechSynthesizers,
    };
}

void DesktopPlatform::show(QWindow &window, const QPalette &palette) {
    m_application.setMainWindow(&window);
    m_fileChooser.setParentWindow(&window, palette);
    requestDarkTitleBar(palette);
    window.show();
    QTimer::singleShot(postShowDelay, &m_menuBarHost, [host = &m_menuBarHost] {
        QApplication::setWindowIcon(windowIcon());
        host->watch();
    });
    QTimer::singleShot(postStartDelay, qApp, [] { malloc_trim(0); });
    m_instance.listen();
}

int DesktopPlatform::end(int status) {
    constexpr std::chrono::seconds saveTimeout{5};
    constexpr std::chrono::milliseconds serviceTimeout{500};
    const std::optional<QString> unsaved = m_listFile.flush(saveTimeout);
    if (unsaved) {
        qWarning().noquote() << "kova-alarm: exiting with unsaved changes:" << *unsaved;
    }
    const bool isSpeechClosed = m_speechSynthesizers.close(serviceTimeout);
    const bool areBusesClosed = m_buses.close(serviceTimeout);
    if (unsaved || !isSpeechClosed || !areBusesClosed || !m_bookmarks.isIdle()) {
        m_instance.stopListening();
        _exit(status);
    }
    return status;
}

} // namespace kova
