#pragma once

#include "AlarmGroup.h"
#include "Result.h"

#include <QByteArray>

namespace kova {

/// The list as a compact JSON array in UTF-8. Fails only for a volume that is not finite.
Result<QByteArray> encodeGroups(const QList<AlarmGroup> &groups);

/// Reads what encodeGroups writes, all of it or nothing: a missing, null or mistyped value fails the whole
/// list. Any bytes may come in.
Result<QList<AlarmGroup>> decodeGroups(const QByteArray &json);

} // namespace kova
