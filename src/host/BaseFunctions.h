#pragma once

#include "host/BaseFunctionsInterface.h"
#include "host/LanguageDefinition.h"
#include "repository/DataAccessInterface.h"

#include <QHash>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <map>
#include <memory>

class QSettings;

// The host's base functions: a map of configured connections (name to
// repository text: a SQLite file path or a PostgreSQL connection string),
// one data-access object per connection, opened on first use and owned
// here, the tree font, language names and definitions, and named host
// objects. Host windows
// that take items register under their window names.
class TQXBaseFunctions : public QObject, public TQXBaseFunctionsInterface {
    Q_OBJECT

public:
    using DataAccessFactory =
        std::function<std::unique_ptr<TQXDataAccessInterface>(const QString& repository)>;
    // A host window's receiver of items: fills errorText on failure.
    using WindowHandler = std::function<void(const QString& connectionName, const TQXItems& items,
                                             const QString& command, QString& errorText)>;

    explicit TQXBaseFunctions(QObject* parent = nullptr);
    ~TQXBaseFunctions() override;

    // Connections.
    void SetConnection(const QString& name, const QString& repository);
    void RemoveConnection(const QString& name);
    QStringList ConnectionNames() const { return FConnections.keys(); }
    QString Repository(const QString& name) const { return FConnections.value(name); }
    // The name a repository text gets as a connection: a file's base name,
    // or a PostgreSQL database's name.
    static QString ConnectionNameFor(const QString& repository);
    // Opens data-access objects; SqlDataAccess unless replaced.
    void SetDataAccessFactory(DataAccessFactory factory) { FFactory = std::move(factory); }
    // Whether the connection's data-access object is open.
    bool IsOpen(const QString& name) const { return FDataAccess.count(name) > 0; }

    // Settings: [Connections] name=repository; [Tree] FontName, FontSize;
    // [Languages] id=name, scope (added to or replacing the shipped ones).
    void LoadSettings(QSettings& settings);
    void SaveSettings(QSettings& settings) const;

    void SetTreeFont(const QString& name, int size);
    void SetLanguageName(int languageID, const QString& name);
    // Names the language and registers its definition as the named object
    // "LangDef_" + name, replacing one of the same name.
    void SetLanguageDefinition(const TQXLanguageSetting& language);
    void RegisterNamedObject(const QString& name, QObject* object);
    void RegisterWindow(const QString& windowName, WindowHandler handler);

    TQXDataAccessInterface* GetDataAccess(const QString& connectionName) override;
    void ChooseSourceDatabase(QWidget* owner, int options, QString& connectionName,
                              int mode) override;
    QString TreeFontName() override;
    int TreeFontSize() override;
    QString GetLanguageName(int languageID) override;
    QObject* GetNamedObject(const QString& name) override;
    void SendItemsToWindow(const QString& windowName, int flag, const QString& connectionName,
                           const TQXItems& items, const QString& command,
                           QString& errorText) override;
    void SendItemsToWindow(const QString& windowName, int flag, const QString& connectionName,
                           const TQXTreeItem& item, const QString& command,
                           QString& errorText) override;
    void ViewRenamed(TQXFormInterface* view, const QString& name) override;
    bool HasWindow(const QString& windowName) override;

signals:
    void FormRenamed(TQXFormInterface* form, const QString& name);
    void ConnectionsChanged();

private:
    QMap<QString, QString> FConnections;
    std::map<QString, std::unique_ptr<TQXDataAccessInterface>> FDataAccess;
    DataAccessFactory FFactory;
    QString FTreeFontName;
    int FTreeFontSize = 0;
    QHash<int, QString> FLanguageNames;
    QHash<QString, QPointer<QObject>> FNamedObjects;
    std::map<QString, std::unique_ptr<TQXLanguageDefinition>> FLanguageDefinitions;
    QHash<QString, WindowHandler> FWindows;
};
