#include "repository/DataAccessInterface.h"

#include "repository/Errors.h"

qint32 VariantToInt(const QVariant& value) {
    bool ok = false;
    const qlonglong number = value.toLongLong(&ok);
    if (!ok || value.isNull())
        throw EQXError(QStringLiteral("Could not convert variant of type (%1) into type (Integer)")
                           .arg(value.isNull() ? QStringLiteral("Null")
                                               : QString::fromLatin1(value.typeName())));
    return static_cast<qint32>(number);
}

QString VariantToText(const QVariant& value) {
    return value.isNull() ? QString() : value.toString();
}
