#include "shell/window/ApplicationMenu.h"

#include "shell/look/Icons.h"
#include "shell/look/Typography.h"
#include "shell/state/MenuBarContentView.h"

#include <QMenu>

namespace quorvane {

void fillApplicationMenu(QMenu& menu, MenuBarContentView& menuBar) {
    menuBar.appear();
    for (const MenuBarItem& item : menuBar.items()) {
        if (item.kind == MenuBarItem::Kind::separator) {
            menu.addSeparator();
            continue;
        }
        auto* const action = menu.addAction(menuIcon(item.iconName), qt(item.text));
        action->setEnabled(item.isEnabled);
        QObject::connect(action, &QAction::triggered, &menu,
                         [&menuBar, wanted = item.action] { menuBar.perform(wanted); });
    }
}

}  // namespace quorvane
