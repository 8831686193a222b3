#pragma once

class QQuickItem;

namespace kova {

/// Returns whether the item is a button or a picker.
bool isPressable(const QQuickItem &item);

/// Has the effect of the space bar when the item has the focus.
void press(QQuickItem &item);

} // namespace kova
