#include "AlarmNotifications.h"

#include "AlarmTimes.h"
#include "Log.h"
#include "NotificationCenter.h"
#include "elided.h"

namespace kova {

void requestNotificationAuthorization(NotificationCenter &center, Log &log) {
    center.requestAuthorization([&log](bool granted, const std::optional<QString> &error) {
        if (error) {
            log.print(QStringLiteral("[Scheduler] Notification error: ") + *error);
        }
        log.print(QStringLiteral("[Scheduler] Notifications ") +
                  (granted ? QStringLiteral("granted") : QStringLiteral("denied")));
    });
}

void sendNotification(NotificationCenter &center, const AlarmGroup &group, qint64 index) {
    const QString prefix =
        group.label.isEmpty() ? QStringLiteral("アラーム ") : elided(group.label) + QStringLiteral(" — ");
    center.add({
        .identifier = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper(),
        .title = QStringLiteral("KOVA"),
        .body = prefix + timeText(alarmTime(group, index)),
        .lifetime = longestRinging,
    });
}

} // namespace kova
