#pragma once

#include <QObject>
#include <qqmlregistration.h>

namespace kova {

/// The font families of the system font's designs.
class Fonts : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString monospaced READ monospaced CONSTANT)
    Q_PROPERTY(QString rounded READ rounded CONSTANT)

public:
    QString monospaced() const;

    /// The first installed rounded family, otherwise the system font.
    QString rounded() const;
};

} // namespace kova
