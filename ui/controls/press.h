#pragma once

class QQuickItem;

namespace kova {

/// Whether the item is a button of some kind or a picker.
bool isPressable(const QQuickItem &item);

/// Does what a press of the space bar does when the item has the focus.
void press(QQuickItem &item);

} // namespace kova
