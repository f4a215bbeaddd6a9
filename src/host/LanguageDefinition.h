#pragma once

#include <QList>
#include <QObject>
#include <QString>

class QSettings;

// A source language as the views need to know it: its QXLanguageID, its name
// and how far a variable is known (Scope). The host keeps one per language
// and finds it by the name "LangDef_" + language name.
class TQXLanguageDefinition : public QObject {
    Q_OBJECT

public:
    // Variables known within their object, or within their whole file.
    static constexpr int ScopeObject = 2;
    static constexpr int ScopeFile = 5;

    TQXLanguageDefinition(int languageID, const QString& name, int scope,
                          QObject* parent = nullptr);

    int LanguageID() const { return FLanguageID; }
    QString Name() const { return FName; }
    int Scope() const { return FScope; }
    void SetScope(int scope) { FScope = scope; }

    // The name the host registers the definition under.
    static QString ObjectName(const QString& languageName);

private:
    int FLanguageID;
    QString FName;
    int FScope;
};

// A language as configured: shipped with the host or read from the settings.
struct TQXLanguageSetting {
    int LanguageID = 0;
    QString Name;
    int Scope = TQXLanguageDefinition::ScopeObject;

    bool operator==(const TQXLanguageSetting&) const = default;
};

// The languages the host knows without configuration: those of the estates
// Korvane ships with (COBOL programs and copy members, JCL, SQL DDL, Java,
// VisualAge Generator, CICS BMS maps, assembler and link-edit decks).
QList<TQXLanguageSetting> ShippedLanguages();

// The [Languages] part of a settings file: one key per language id, its
// value the language name and the scope, e.g. "20100=COBOL, 2". An entry
// whose id, name or scope cannot be read is left out and named in
// `rejected`, so the caller can say so.
QList<TQXLanguageSetting> LanguagesFromSettings(QSettings& settings,
                                                QStringList* rejected = nullptr);
