#pragma once

#include "MenuBarContent.h"

#include <QMenu>

namespace kova {

/// A menu of the menu-bar item's lines. Main thread.
class MenuBarMenu : public QMenu {
    Q_OBJECT

public:
    enum Use {
        Drawn,   ///< by the program itself
        Exported ///< on the message bus, where the desktop draws it
    };

    explicit MenuBarMenu(Use use);

    /// Changes the lines that differ, no others.
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
