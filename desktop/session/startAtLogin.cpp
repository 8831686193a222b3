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
#include <utility>

namespace kova {

namespace {

// Each of these tells why it can't be done, or nothing.

QString makeEntry() {
    const QString name = QStringLiteral("jp.kova.Alarm");
    const QString extension = QStringLiteral("desktop");
    const auto shipped = InstalledResources().path(QStringLiteral("autostart/") + name, extension);
    const QDir config(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    const QString own = config.filePath(QStringLiteral("autostart/") + name + u'.' + extension);
    if (!shipped) {
        return QStringLiteral("the program is not installed");
    }
    QFile entry(*shipped);
    config.mkpath(QStringLiteral("autostart"));
    QFile::remove(own); // which may be switched off
    return entry.copy(own) ? QString() : entry.errorString();
}

// What the portal answers once the user has decided.
QString obstacle(const QDBusMessage &response) {
    const auto results = qdbus_cast<QVariantMap>(response.arguments().value(1));
    const bool isGranted = results.value(QStringLiteral("autostart")).toBool();
    return isGranted ? QString() : QStringLiteral("it was not allowed");
}

QString askPortal() {
    std::promise<QString> promise;
    auto answer = [&promise, isGiven = false](const QString &text) mutable {
        if (!std::exchange(isGiven, true)) {
            promise.set_value(text);
        }
    };
    const QVariantMap options{{QStringLiteral("autostart"), true},
                              {QStringLiteral("reason"), QStringLiteral("アラームを鳴らすため")}};
    const QDBusMessage call =
        portalCall(QStringLiteral("org.freedesktop.portal.Background"), QStringLiteral("RequestBackground"))
        << QString() << options;
    MessageBuses buses;
    buses.run([&buses, &answer, &call] {
        buses.listen(QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"),
                     [&answer](const QDBusMessage &response) { answer(obstacle(response)); });
        buses.call(Bus::Session, call, [&answer](const QDBusMessage &reply) {
            if (reply.type() == QDBusMessage::ErrorMessage) {
                answer(reply.errorMessage());
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
        std::fprintf(stderr, "kova-alarm: no start at login: %s\n", qPrintable(reason));
    }
    return reason.isEmpty() ? 0 : 1;
}

} // namespace kova
