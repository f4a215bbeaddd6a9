#include "host/BaseFunctions.h"

#include "host/Items.h"
#include "platform/UIServices.h"
#include "repository/Errors.h"
#include "repository/TreeItems.h"
#include "sqlaccess/RepositoryConnection.h"
#include "sqlaccess/SqlDataAccess.h"

#include <QFileInfo>
#include <QFont>
#include <QGuiApplication>
#include <QSettings>

TQXBaseFunctions::TQXBaseFunctions(QObject* parent)
    : QObject(parent), FFactory([](const QString& repository) {
          return std::make_unique<SqlDataAccess>(repository);
      }) {
    for (const TQXLanguageSetting& language : ShippedLanguages())
        SetLanguageDefinition(language);
}

TQXBaseFunctions::~TQXBaseFunctions() = default;

void TQXBaseFunctions::SetConnection(const QString& name, const QString& repository) {
    if (FConnections.value(name) == repository && FConnections.contains(name))
        return;
    FConnections.insert(name, repository);
    // A changed repository is opened anew on next use.
    FDataAccess.erase(name);
    emit ConnectionsChanged();
}

void TQXBaseFunctions::RemoveConnection(const QString& name) {
    FConnections.remove(name);
    FDataAccess.erase(name);
    emit ConnectionsChanged();
}

QString TQXBaseFunctions::ConnectionNameFor(const QString& repository) {
    const RepositoryLocation location = RepositoryLocation::Parse(repository);
    if (location.kind == RepositoryLocation::Kind::PostgreSQL)
        return location.databaseName.isEmpty() ? location.Display() : location.databaseName;
    return QFileInfo(location.filePath).completeBaseName();
}

void TQXBaseFunctions::LoadSettings(QSettings& settings) {
    settings.beginGroup(QStringLiteral("Connections"));
    for (const QString& name : settings.childKeys())
        FConnections.insert(name, settings.value(name).toString());
    settings.endGroup();
    settings.beginGroup(QStringLiteral("Tree"));
    FTreeFontName = settings.value(QStringLiteral("FontName"), FTreeFontName).toString();
    FTreeFontSize = settings.value(QStringLiteral("FontSize"), FTreeFontSize).toInt();
    settings.endGroup();
    for (const TQXLanguageSetting& language : LanguagesFromSettings(settings))
        SetLanguageDefinition(language);
    emit ConnectionsChanged();
}

void TQXBaseFunctions::SaveSettings(QSettings& settings) const {
    settings.remove(QStringLiteral("Connections"));
    settings.beginGroup(QStringLiteral("Connections"));
    for (auto it = FConnections.cbegin(); it != FConnections.cend(); ++it)
        settings.setValue(it.key(), it.value());
    settings.endGroup();
    settings.beginGroup(QStringLiteral("Tree"));
    if (!FTreeFontName.isEmpty())
        settings.setValue(QStringLiteral("FontName"), FTreeFontName);
    if (FTreeFontSize > 0)
        settings.setValue(QStringLiteral("FontSize"), FTreeFontSize);
    settings.endGroup();
}

void TQXBaseFunctions::SetTreeFont(const QString& name, int size) {
    FTreeFontName = name;
    FTreeFontSize = size;
}

void TQXBaseFunctions::SetLanguageName(int languageID, const QString& name) {
    FLanguageNames.insert(languageID, name);
}

void TQXBaseFunctions::SetLanguageDefinition(const TQXLanguageSetting& language) {
    auto definition =
        std::make_unique<TQXLanguageDefinition>(language.LanguageID, language.Name, language.Scope);
    SetLanguageName(language.LanguageID, language.Name);
    RegisterNamedObject(definition->objectName(), definition.get());
    FLanguageDefinitions[definition->objectName()] = std::move(definition);
}

void TQXBaseFunctions::RegisterNamedObject(const QString& name, QObject* object) {
    FNamedObjects.insert(name, object);
}

void TQXBaseFunctions::RegisterWindow(const QString& windowName, WindowHandler handler) {
    FWindows.insert(windowName, std::move(handler));
}

TQXDataAccessInterface* TQXBaseFunctions::GetDataAccess(const QString& connectionName) {
    auto open = FDataAccess.find(connectionName);
    if (open != FDataAccess.end())
        return open->second.get();
    if (connectionName.isEmpty())
        throw EQXError(tr("No Source Database chosen"));
    if (!FConnections.contains(connectionName))
        throw EQXError(tr("Source Database \"%1\" is not configured").arg(connectionName));
    std::unique_ptr<TQXDataAccessInterface> dataAccess =
        FFactory(FConnections.value(connectionName));
    if (!dataAccess)
        throw EQXError(tr("Source Database \"%1\" could not be opened").arg(connectionName));
    TQXDataAccessInterface* result = dataAccess.get();
    FDataAccess.emplace(connectionName, std::move(dataAccess));
    return result;
}

void TQXBaseFunctions::ChooseSourceDatabase(QWidget* owner, int, QString& connectionName, int) {
    TQXUIServices& ui = TQXUIServices::Current();
    const QString caption = tr("Source Databases");
    if (FConnections.isEmpty()) {
        // Nothing configured yet: let the user pick a repository file.
        const QString path = ui.OpenFileName(
            owner, caption, tr("Korvane repositories (*.kvdb)|*.kvdb|All files (*)|*"), QString());
        if (path.isEmpty())
            return;
        const QString name = ConnectionNameFor(path);
        SetConnection(name, path);
        connectionName = name;
        return;
    }
    const std::optional<QString> choice = ui.ChooseItem(
        owner, caption, tr("Choose the Source Database:"), ConnectionNames(), connectionName);
    if (choice)
        connectionName = *choice;
}

QString TQXBaseFunctions::TreeFontName() {
    return FTreeFontName.isEmpty() ? QGuiApplication::font().family() : FTreeFontName;
}

int TQXBaseFunctions::TreeFontSize() {
    if (FTreeFontSize > 0)
        return FTreeFontSize;
    const int size = QGuiApplication::font().pointSize();
    return size > 0 ? size : 10;
}

QString TQXBaseFunctions::GetLanguageName(int languageID) {
    return FLanguageNames.value(languageID);
}

QObject* TQXBaseFunctions::GetNamedObject(const QString& name) {
    QObject* object = FNamedObjects.value(name);
    if (!object)
        throw EQXError(tr("No host object named \"%1\"").arg(name));
    return object;
}

void TQXBaseFunctions::SendItemsToWindow(const QString& windowName, int,
                                         const QString& connectionName, const TQXItems& items,
                                         const QString& command, QString& errorText) {
    errorText.clear();
    auto handler = FWindows.constFind(windowName);
    if (handler == FWindows.constEnd()) {
        errorText = tr("The host has no window named \"%1\"").arg(windowName);
        return;
    }
    (*handler)(connectionName, items, command, errorText);
}

void TQXBaseFunctions::SendItemsToWindow(const QString& windowName, int flag,
                                         const QString& connectionName, const TQXTreeItem& item,
                                         const QString& command, QString& errorText) {
    TQXItems items;
    if (const auto* treeItem = dynamic_cast<const TQXItem*>(&item)) {
        items.AddItem(treeItem->FileID, treeItem->SystemID, treeItem->ComputerID,
                      treeItem->ApplicationID, treeItem->PackageID, treeItem->ObjectID,
                      treeItem->EntryID, treeItem->RowID, treeItem->WordID);
    } else if (const auto* dataItem = dynamic_cast<const TQXDataItem*>(&item)) {
        items.AddItem(dataItem->FileID, 0, 0, 0, 0, dataItem->ObjectID, dataItem->EntryID,
                      dataItem->RowID, dataItem->WordID);
        items.AddText(dataItem->DataText1);
    }
    SendItemsToWindow(windowName, flag, connectionName, items, command, errorText);
}

void TQXBaseFunctions::ViewRenamed(TQXFormInterface* view, const QString& name) {
    emit FormRenamed(view, name);
}

bool TQXBaseFunctions::HasWindow(const QString& windowName) {
    return FWindows.contains(windowName);
}
