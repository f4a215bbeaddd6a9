#include "host/LanguageDefinition.h"

#include <QSettings>

TQXLanguageDefinition::TQXLanguageDefinition(int languageID, const QString& name, int scope,
                                             QObject* parent)
    : QObject(parent), FLanguageID(languageID), FName(name), FScope(scope) {
    setObjectName(ObjectName(name));
}

QString TQXLanguageDefinition::ObjectName(const QString& languageName) {
    return QStringLiteral("LangDef_") + languageName;
}

QList<TQXLanguageSetting> ShippedLanguages() {
    constexpr int Object = TQXLanguageDefinition::ScopeObject;
    constexpr int File = TQXLanguageDefinition::ScopeFile;
    return {{20100, QStringLiteral("COBOL"), Object},
            {20101, QStringLiteral("COBOL Copybook"), Object},
            {20200, QStringLiteral("JCL"), File},
            {20300, QStringLiteral("SQL DDL"), File},
            {20400, QStringLiteral("Java"), Object},
            {20500, QStringLiteral("VisualAge Generator 4.5"), Object},
            {20525, QStringLiteral("CICS BMS"), File},
            {20600, QStringLiteral("Assembler"), File},
            {20700, QStringLiteral("Link-Edit"), File}};
}

QList<TQXLanguageSetting> LanguagesFromSettings(QSettings& settings, QStringList* rejected) {
    QList<TQXLanguageSetting> languages;
    settings.beginGroup(QStringLiteral("Languages"));
    for (const QString& key : settings.childKeys()) {
        // An unquoted "NAME, 2" comes back as a list; a quoted one as text.
        const QVariant value = settings.value(key);
        QStringList parts = value.toStringList();
        if (parts.size() == 1)
            parts = parts.first().split(QLatin1Char(','));
        bool idOk = false;
        bool scopeOk = false;
        TQXLanguageSetting language;
        language.LanguageID = key.toInt(&idOk);
        if (parts.size() == 2) {
            language.Name = parts[0].trimmed();
            language.Scope = parts[1].trimmed().toInt(&scopeOk);
        }
        if (idOk && scopeOk && !language.Name.isEmpty())
            languages << language;
        else if (rejected)
            *rejected << key;
    }
    settings.endGroup();
    return languages;
}
