#include "ViewLibrary.h"

#include "host/FormRegistry.h"
#include "repository/Errors.h"

#include <QDir>

void TQXViewLibrary::Load(const QString& folder) {
    FLibrary.setFileName(QDir(folder).filePath(QStringLiteral("korvaneview")));
    if (!FLibrary.load())
        throw EQXError(QStringLiteral("Could not load the view library from %1: %2")
                           .arg(QDir::toNativeSeparators(folder), FLibrary.errorString()));
    if (!TQXFormRegistry::IsRegistered(QStringLiteral("TQXView")))
        throw EQXError(QStringLiteral("The view library %1 registered no TQXView")
                           .arg(QDir::toNativeSeparators(FLibrary.fileName())));
}
