#pragma once

#include "ContinuousRectangle.h"

namespace kova {

/// The ring around its parent that shows where the keyboard is. It costs next to nothing while it is not
/// shown, as most are never.
class FocusRing : public kova::ContinuousRectangle { // the type registrar finds full names only
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool shown READ isVisible WRITE setShown NOTIFY visibleChanged)
    Q_PROPERTY(qreal cornerRadius MEMBER m_cornerRadius) ///< the parent's
    Q_PROPERTY(qreal gap MEMBER m_gap)                   ///< between the parent's edge and the ring

public:
    explicit FocusRing(QQuickItem *parent = nullptr);

    void setShown(bool shown);

private:
    void place();

    qreal m_cornerRadius = 6;
    qreal m_gap = 1;
};

} // namespace kova
