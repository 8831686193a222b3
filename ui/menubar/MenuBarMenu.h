#pragma once

#include "MenuBarContent.h"

#include <QMenu>

namespace kova {

/// The menu of the menu-bar item. Main thread.
class MenuBarMenu : public QMenu {
    Q_OBJECT

public:
    enum Use {
        Drawn,   ///< by this process
        Exported ///< on the session bus, drawn by the desktop
    };

    explicit MenuBarMenu(Use use) : m_use(use) { setSeparatorsCollapsible(true); }

    void setContent(const QList<MenuBarEntry> &content);

protected:
    void initStyleOption(QStyleOptionMenuItem *option, const QAction *action) const override;

Q_SIGNALS:
    void showWindow();
    void quit();

private:
    QAction *makeAction(const MenuBarEntry &entry);
    void fill(QAction *action, const MenuBarEntry &entry) const;

    const Use m_use;
    QList<MenuBarEntry> m_content;
};

} // namespace kova
