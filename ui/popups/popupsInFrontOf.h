#pragma once

#include <QList>

class QQuickItem;

namespace kova {

/// Returns the parent of all popups in the item's window, null if there has been none yet.
QQuickItem *overlayOf(const QQuickItem &item);

/// Returns the visible popups in front of the item, the topmost first.
QList<QQuickItem *> popupsInFrontOf(const QQuickItem &item);

} // namespace kova
