#include "popupsInFrontOf.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <algorithm>

namespace kova {

QQuickItem *overlayOf(const QQuickItem &item) {
    const QList<QQuickItem *> layers =
        item.window() ? item.window()->contentItem()->childItems() : QList<QQuickItem *>();
    const auto overlay = std::find_if(layers.cbegin(), layers.cend(), [](const QQuickItem *layer) {
        return layer->inherits("QQuickOverlay");
    });
    return overlay == layers.cend() ? nullptr : *overlay;
}

QList<QQuickItem *> popupsInFrontOf(const QQuickItem &item) {
    const QQuickItem *overlay = overlayOf(item);
    const QList<QQuickItem *> layers = overlay ? overlay->childItems() : QList<QQuickItem *>();
    QList<QQuickItem *> popups;
    for (auto layer = layers.crbegin(); layer != layers.crend(); ++layer) {
        if (*layer == &item || (*layer)->isAncestorOf(&item)) {
            break;
        }
        if ((*layer)->isVisible() && (*layer)->inherits("QQuickPopupItem")) {
            popups << *layer;
        }
    }
    return popups;
}

} // namespace kova
