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
    Q_PROPERTY(QColor background MEMBER m_background CONSTANT)
    Q_PROPERTY(QColor surface MEMBER m_surface CONSTANT)
    Q_PROPERTY(QColor accent MEMBER m_accent CONSTANT)
    Q_PROPERTY(QColor textPrimary MEMBER m_textPrimary CONSTANT)
    Q_PROPERTY(QColor textSecondary MEMBER m_textSecondary CONSTANT)
    Q_PROPERTY(QColor danger MEMBER m_danger CONSTANT)

public:
    QColor accent() const { return m_accent; }

private:
    const QColor m_background = QColor::fromRgbF(0.05F, 0.11F, 0.17F);
    const QColor m_surface = QColor::fromRgbF(0.12F, 0.18F, 0.25F);
    const QColor m_accent = QColor::fromRgbF(1.00F, 0.42F, 0.21F);
    const QColor m_textPrimary = QColor::fromRgbF(0.93F, 0.94F, 0.96F);
    const QColor m_textSecondary = QColor::fromRgbF(0.55F, 0.60F, 0.67F);
    const QColor m_danger = QColor::fromRgbF(0.90F, 0.25F, 0.20F);
};

} // namespace kova
