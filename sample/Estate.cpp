#include "Estate.h"

#include "repository/Errors.h"

qint32 TEstate::AddAttribute(int type, const QString& name, int icon) {
    const qint32 id = FNextAttribute++;
    FWriter.Attribute(id, type, name, icon);
    FAttributeNames.insert(id, name);
    return id;
}

qint32 TEstate::AddFile(const QString& name, const QString& directory, int language,
                        const TAssignment& assignment) {
    const qint32 id = FNextFile++;
    FWriter.File(id, assignment.computer, assignment.system, assignment.application, language, name,
                 directory);
    // A load record names the attributes; a computer as its type and location,
    // which its attribute name joins with "@".
    const QString computer = FAttributeNames.value(assignment.computer);
    const qsizetype at = computer.indexOf(QLatin1Char('@'));
    FWriter.Load(id, directory, name, language, FAttributeNames.value(assignment.system),
                 at < 0 ? computer : computer.left(at), at < 0 ? QString() : computer.mid(at + 1),
                 FAttributeNames.value(assignment.application));
    return id;
}

void TEstate::Define(const QString& key, const TTarget& target) {
    if (FTargets.contains(key))
        throw EQXError(QStringLiteral("Sample estate: call target defined twice: ") + key);
    FTargets.insert(key, target);
}

TTarget TEstate::FindCallable(const QString& name) const {
    for (const char* kind : {"PGM:", "FUN:", "MAP:", "TAB:"}) {
        const auto found = FTargets.constFind(QLatin1String(kind) + name);
        if (found != FTargets.constEnd())
            return *found;
    }
    throw EQXError(QStringLiteral("Sample estate: nothing called ") + name);
}

TTarget TEstate::Find(const QString& key) const {
    const auto found = FTargets.constFind(key);
    if (found == FTargets.constEnd())
        throw EQXError(QStringLiteral("Sample estate: no call target ") + key);
    return *found;
}
