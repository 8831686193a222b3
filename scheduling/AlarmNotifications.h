#pragma once

#include "AlarmGroup.h"

namespace kova {

class Log;
class NotificationCenter;

/// Requests permission for alerts and sounds; the result is only logged.
void requestNotificationAuthorization(NotificationCenter &center, Log &log);

/// Posts the notification of the alarm at a 0-based index, with its planned time.
void sendNotification(NotificationCenter &center, const AlarmGroup &group, qint64 index);

} // namespace kova
