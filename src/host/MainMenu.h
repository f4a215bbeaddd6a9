#pragma once

#include <QList>
#include <QPointer>
#include <QString>

class QAction;
class QMenu;
class QObject;
class QWidget;

// A form's main menu: top-level menus in order, each with a group index.
// Merging another main menu into this one places the other's menus by group
// index: a menu replaces those of ours with the same group index, and the
// rest keep ascending group order. Menus are owned by the widget that made
// them; a merged menu only refers to them.
class TQXMainMenu {
public:
    explicit TQXMainMenu(QWidget* owner);

    // A new top-level menu owned by the owner widget; `name` is the object
    // name of the menu and of its menu action.
    QMenu* AddMenu(const QString& name, const QString& caption, int groupIndex);
    void Merge(const TQXMainMenu& other);

    QList<QMenu*> Menus() const;
    QMenu* FindMenu(const QString& name) const;
    // The item (action or sub-menu action) with this object name, at any
    // depth; null when there is none.
    QAction* FindItem(const QString& name) const;

    static void SetGroupIndex(QObject* menuOrItem, int groupIndex);
    static int GroupIndex(const QObject* menuOrItem);

private:
    QWidget* FOwner;
    QList<QPointer<QMenu>> FMenus;
};
