#include "SharePicker.h"

#include <QCursor>
#include <QIcon>
#include <QMenu>

QMenu *showSharePicker(const QList<ShareTarget> &targets, QWidget *anchor, std::function<void(const QString &id)> chosen,
                       std::function<void()> closed)
{
    auto *menu = new QMenu(anchor);
    menu->setObjectName(QStringLiteral("sharePicker"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    bool ownPart = false;
    for (const ShareTarget &t : targets) {
        // What the machine has first, then a line, then what Quaydrop does itself.
        const bool own = t.id == QLatin1String("save-as") || t.id == QLatin1String("copy-links");
        if (own && !ownPart && !menu->isEmpty())
            menu->addSeparator();
        ownPart = ownPart || own;
        QAction *action = menu->addAction(QIcon::fromTheme(t.iconName), t.title);
        action->setObjectName(t.id);
        QObject::connect(action, &QAction::triggered, menu, [chosen, id = t.id] { chosen(id); });
    }
    QObject::connect(menu, &QMenu::aboutToHide, menu, [closed] {
        if (closed)
            closed();
    });
    menu->popup(anchor ? anchor->mapToGlobal(QPoint(0, anchor->height())) : QCursor::pos());
    return menu;
}
