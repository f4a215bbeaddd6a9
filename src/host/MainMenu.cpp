#include "host/MainMenu.h"

#include <QAction>
#include <QMenu>
#include <QVariant>
#include <QWidget>

namespace {

constexpr const char* GroupIndexProperty = "GroupIndex";

QAction* FindIn(const QMenu* menu, const QString& name) {
    for (QAction* action : menu->actions()) {
        if (action->objectName() == name)
            return action;
        if (const QMenu* sub = action->menu())
            if (QAction* found = FindIn(sub, name))
                return found;
    }
    return nullptr;
}

} // namespace

TQXMainMenu::TQXMainMenu(QWidget* owner) : FOwner(owner) {}

QMenu* TQXMainMenu::AddMenu(const QString& name, const QString& caption, int groupIndex) {
    auto* menu = new QMenu(caption, FOwner); // owned by the owner widget
    menu->setObjectName(name);
    menu->menuAction()->setObjectName(name);
    SetGroupIndex(menu, groupIndex);
    SetGroupIndex(menu->menuAction(), groupIndex);
    FMenus << menu;
    return menu;
}

void TQXMainMenu::Merge(const TQXMainMenu& other) {
    const QList<QMenu*> merged = other.Menus();
    QList<int> groups;
    for (const QMenu* menu : merged)
        groups << GroupIndex(menu);

    QList<QPointer<QMenu>> result;
    for (const QPointer<QMenu>& menu : FMenus)
        if (menu && !groups.contains(GroupIndex(menu)))
            result << menu;
    for (QMenu* menu : merged) {
        int position = 0;
        while (position < result.size() && GroupIndex(result[position]) <= GroupIndex(menu))
            ++position;
        result.insert(position, menu);
    }
    FMenus = result;
}

QList<QMenu*> TQXMainMenu::Menus() const {
    QList<QMenu*> menus;
    for (const QPointer<QMenu>& menu : FMenus)
        if (menu)
            menus << menu;
    return menus;
}

QMenu* TQXMainMenu::FindMenu(const QString& name) const {
    for (QMenu* menu : Menus())
        if (menu->objectName() == name)
            return menu;
    return nullptr;
}

QAction* TQXMainMenu::FindItem(const QString& name) const {
    for (QMenu* menu : Menus()) {
        if (menu->objectName() == name)
            return menu->menuAction();
        if (QAction* found = FindIn(menu, name))
            return found;
    }
    return nullptr;
}

void TQXMainMenu::SetGroupIndex(QObject* menuOrItem, int groupIndex) {
    menuOrItem->setProperty(GroupIndexProperty, groupIndex);
}

int TQXMainMenu::GroupIndex(const QObject* menuOrItem) {
    return menuOrItem ? menuOrItem->property(GroupIndexProperty).toInt() : 0;
}
