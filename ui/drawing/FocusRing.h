#pragma once

#include "ContinuousRectangle.h"

namespace kova {

/// The ring around its parent, shown while a control has the focus in a window that shows it. Creates nothing
/// to paint before it is shown, as most rings never are.
class FocusRing : public kova::ContinuousRectangle { // the type registrar finds full names only
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *target MEMBER m_target WRITE setTarget) ///< the control, which outlives the ring
    Q_PROPERTY(qreal cornerRadius MEMBER m_cornerRadius)           ///< the parent's
    Q_PROPERTY(qreal gap MEMBER m_gap)                             ///< between the parent's edge and the ring

public:
    explicit FocusRing(QQuickItem *parent = nullptr) : ContinuousRectangle(parent) { setVisible(false); }

    void setTarget(QQuickItem *target);

private:
    void showFocus();
    void place();

    QQuickItem *m_target = nullptr;
    qreal m_cornerRadius = 6;
    qreal m_gap = 1;
};

} // namespace kova
