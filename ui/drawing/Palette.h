#pragma once

#include <QColor>
#include <QObject>
#include <qqmlregistration.h>

namespace kova {

/// The colours of the interface: the six of the design, sRGB and opaque, and those that views derive from
/// them.
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
    Q_PROPERTY(QColor textOnAccent READ textOnAccent CONSTANT)
    Q_PROPERTY(QColor textOnDanger READ textOnDanger CONSTANT)
    Q_PROPERTY(QColor focus READ focus CONSTANT)     ///< the focus indicator
    Q_PROPERTY(QColor line READ line CONSTANT)       ///< a divider on a surface
    Q_PROPERTY(QColor edge READ edge CONSTANT)       ///< the outline of a panel
    Q_PROPERTY(QColor control READ control CONSTANT) ///< a control's surface
    Q_PROPERTY(QColor hovered READ hovered CONSTANT) ///< a control under the pointer
    Q_PROPERTY(QColor dimming READ dimming CONSTANT) ///< over the window behind a panel
    Q_PROPERTY(QColor knob READ knob CONSTANT)
    Q_PROPERTY(QColor pressedKnob READ pressedKnob CONSTANT)
    Q_PROPERTY(qreal disabled READ disabled CONSTANT) ///< opacity of a disabled control
    Q_PROPERTY(qreal pressed READ pressed CONSTANT)   ///< opacity of a pressed button

public:
    static QColor background() { return QColor::fromRgbF(0.05F, 0.11F, 0.17F); }
    static QColor surface() { return QColor::fromRgbF(0.12F, 0.18F, 0.25F); }
    static QColor accent() { return QColor::fromRgbF(1.00F, 0.42F, 0.21F); }
    static QColor textPrimary() { return QColor::fromRgbF(0.93F, 0.94F, 0.96F); }
    static QColor textSecondary() { return QColor::fromRgbF(0.55F, 0.60F, 0.67F); }
    static QColor danger() { return QColor::fromRgbF(0.90F, 0.25F, 0.20F); }
    static QColor textOnAccent() { return Qt::black; }
    static QColor textOnDanger() { return Qt::white; }
    static QColor focus() { return translucent(accent(), 0.75F); }
    static QColor line() { return translucent(textSecondary(), 0.3F); }
    static QColor edge() { return translucent(textPrimary(), 0.12F); }
    static QColor control() { return translucent(textPrimary(), 0.1F); }
    static QColor hovered() { return translucent(textPrimary(), 0.14F); }
    static QColor dimming() { return translucent(Qt::black, 0.4F); }
    static QColor knob() { return Qt::white; }
    static QColor pressedKnob() { return QColor::fromRgbF(0.9F, 0.9F, 0.9F); }
    static qreal disabled() { return 0.4; }
    static qreal pressed() { return 0.6; }

private:
    static QColor translucent(QColor color, float alpha) {
        color.setAlphaF(alpha);
        return color;
    }
};

} // namespace kova
