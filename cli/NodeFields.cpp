#include "NodeFields.h"

#include "platform/TreeControl.h"
#include "repository/TreeItems.h"

namespace nodefields {

namespace {
Field Id(const char* name, qint32 value) {
    return {QLatin1String(name), QString::number(value), false};
}
Field Text(const char* name, const QString& value) {
    return {QLatin1String(name), value, true};
}
} // namespace

QList<Field> ItemFields(const TQXTreeItem* item) {
    if (const auto* i = dynamic_cast<const TQXItem*>(item))
        return {Id("file", i->FileID),         Id("system", i->SystemID),
                Id("computer", i->ComputerID), Id("application", i->ApplicationID),
                Id("package", i->PackageID),   Id("object", i->ObjectID),
                Id("entry", i->EntryID),       Id("row", i->RowID),
                Id("word", i->WordID)};
    if (const auto* d = dynamic_cast<const TQXDataItem*>(item))
        return {Text("text1", d->DataText1),
                Text("text2", d->DataText2),
                Id("ownerFile", d->OwnerFileID),
                Id("ownerObject", d->OwnerObjectID),
                Id("ownerEntry", d->OwnerEntryID),
                Id("file", d->FileID),
                Id("object", d->ObjectID),
                Id("entry", d->EntryID),
                Id("row", d->RowID),
                Id("word", d->WordID),
                Id("language", d->LanguageID)};
    return {};
}

QStringList AllFieldNames() {
    return {
        QStringLiteral("file"),        QStringLiteral("system"),     QStringLiteral("computer"),
        QStringLiteral("application"), QStringLiteral("package"),    QStringLiteral("object"),
        QStringLiteral("entry"),       QStringLiteral("row"),        QStringLiteral("word"),
        QStringLiteral("text1"),       QStringLiteral("text2"),      QStringLiteral("ownerFile"),
        QStringLiteral("ownerObject"), QStringLiteral("ownerEntry"), QStringLiteral("language")};
}

QList<const TQXTreeNode*> ShownRoots(const TQXTreeControl& tree) {
    QList<const TQXTreeNode*> roots;
    for (int i = 0; i < tree.RootCount(); ++i)
        roots << tree.Root(i);
    return roots;
}

QList<const TQXTreeNode*> ShownChildren(const TQXTreeNode& node) {
    QList<const TQXTreeNode*> children;
    for (int i = 0; i < node.ChildCount(); ++i)
        children << node.Child(i);
    return children;
}

bool Expandable(const TQXTreeNode& node) {
    return TQXTreeControl::HasPlaceholder(&node);
}

} // namespace nodefields
