#pragma once

#include <QColor>
#include <QObject>
#include <qqmlregistration.h>

namespace kova {

/// The colours of the interface, all sRGB and opaque.
class Palette : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor background READ background CONSTANT)
    Q_PROPERTY(QColor surface READ surface CONSTANT)
    Q_PROPERTY(QColor accent READ accent CONSTANT)
    Q_PROPERTY(QColor textPrimary READ textPrimary CONSTANT)
    Q_PROPERTY(QColor textSecondary READ textSecondary CONSTANT)
    Q_PROPERTY(QColor danger READ danger CONSTANT)

public:
    static QColor background() { return QColor::fromRgbF(0.05F, 0.11F, 0.17F); }
    static QColor surface() { return QColor::fromRgbF(0.12F, 0.18F, 0.25F); }
    static QColor accent() { return QColor::fromRgbF(1.00F, 0.42F, 0.21F); }
    static QColor textPrimary() { return QColor::fromRgbF(0.93F, 0.94F, 0.96F); }
    static QColor textSecondary() { return QColor::fromRgbF(0.55F, 0.60F, 0.67F); }
    static QColor danger() { return QColor::fromRgbF(0.90F, 0.25F, 0.20F); }
};

} // namespace kova
