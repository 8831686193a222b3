#pragma once

#include "AlarmGroup.h"

namespace kova {

class Log;
class NotificationCenter;

/// Asks once for alerts and sounds; the answer is only logged.
void requestNotificationAuthorization(NotificationCenter &center, Log &log);

/// Posts the notification of the alarm at a 0-based index, with the alarm's planned time.
void sendNotification(NotificationCenter &center, const AlarmGroup &group, qint64 index);

} // namespace kova
