#include "startAtLogin.h"

#include "InstalledResources.h"
#include "MessageBuses.h"
#include "Portal.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <cstdio>
#include <future>
#include <mutex>

namespace kova {

namespace {

// These return the reason for a failure, or an empty text.

QString makeEntry() {
    const QString name = QStringLiteral("autostart/jp.kova.Alarm.desktop");
    const std::optional<QString> shipped = InstalledResources().path(name);
    const QDir config(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    const QString own = config.filePath(name);
    if (!shipped) {
        return QStringLiteral("the application is not installed");
    }
    QFile entry(*shipped);
    config.mkpath(QStringLiteral("autostart"));
    QFile::remove(own); // it may be a disabled one
    return entry.copy(own) ? QString() : entry.errorString();
}

QString askPortal() {
    std::promise<QString> promise;
    std::once_flag once;
    const auto finish = [&](const QString &reason) {
        std::call_once(once, [&] { promise.set_value(reason); });
    };
    const QVariantMap options{{QStringLiteral("autostart"), true},
                              {QStringLiteral("reason"), QStringLiteral("アラームを鳴らすため")}};
    const QDBusMessage call =
        portalCall(QStringLiteral("org.freedesktop.portal.Background"), QStringLiteral("RequestBackground"))
        << QString() << options;
    MessageBuses buses;
    buses.run([&buses, &finish, &call] {
        buses.listen(QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"),
                     [&finish](const QDBusMessage &response) { // follows the user's decision
                         const auto results = qdbus_cast<QVariantMap>(response.arguments().value(1));
                         const bool isGranted = results.value(QStringLiteral("autostart")).toBool();
                         finish(isGranted ? QString() : QStringLiteral("permission denied"));
                     });
        buses.call(Bus::Session, call, [&finish](const QDBusMessage &reply) {
            if (reply.type() == QDBusMessage::ErrorMessage) {
                finish(reply.errorMessage());
            }
        });
    });
    return promise.get_future().get();
}

} // namespace

int startAtLogin(int argc, char *argv[]) {
    const QCoreApplication application(argc, argv);
    const QString reason = isSandboxed() ? askPortal() : makeEntry();
    if (!reason.isEmpty()) {
        std::fprintf(stderr, "kova-alarm: cannot enable start at login: %s\n", qPrintable(reason));
    }
    return reason.isEmpty() ? 0 : 1;
}

} // namespace kova
