#include "shell/window/ApplicationMenu.h"

#include "shell/look/Icons.h"
#include "shell/look/Typography.h"
#include "shell/state/MenuBarContentView.h"
#include "updates/ZelkorUpdateCommands.h"

#include <QMenu>

namespace quorvane {

void fillApplicationMenu(QMenu& menu, MenuBarContentView& menuBar, ZelkorUpdateController& updates,
                         const Localization& localization) {
    menuBar.appear();
    for (const MenuBarItem& item : menuBar.items()) {
        if (item.kind == MenuBarItem::Kind::separator) {
            menu.addSeparator();
            continue;
        }
        auto* const action = menu.addAction(icon(item.iconName), qt(item.text));
        action->setEnabled(item.isEnabled);
        QObject::connect(action, &QAction::triggered, &menu,
                         [&menuBar, wanted = item.action] { menuBar.perform(wanted); });
    }
    ZelkorUpdateCommands commands(updates, localization);
    menu.addSeparator();
    auto* const check = menu.addAction(icon("refresh"), qt(commands.text()));
    check->setEnabled(commands.isEnabled());
    QObject::connect(check, &QAction::triggered, &menu, [commands]() mutable { commands.perform(); });
}

}  // namespace quorvane
