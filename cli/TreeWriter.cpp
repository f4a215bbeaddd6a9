#include "TreeWriter.h"

#include "CsvTreeWriter.h"
#include "JsonTreeWriter.h"
#include "TextTreeWriter.h"

#include <functional>

namespace {

struct Format {
    QString Name;
    std::function<std::unique_ptr<TQXTreeWriter>()> Make;
};

const QList<Format>& Table() {
    static const QList<Format> table{
        {QStringLiteral("text"), [] { return std::make_unique<TQXTextTreeWriter>(); }},
        {QStringLiteral("json"), [] { return std::make_unique<TQXJsonTreeWriter>(); }},
        {QStringLiteral("csv"), [] { return std::make_unique<TQXCsvTreeWriter>(); }}};
    return table;
}

} // namespace

QStringList TQXTreeWriter::Formats() {
    QStringList names;
    for (const Format& format : Table())
        names << format.Name;
    return names;
}

std::unique_ptr<TQXTreeWriter> TQXTreeWriter::Create(const QString& format) {
    for (const Format& entry : Table())
        if (entry.Name == format)
            return entry.Make();
    return nullptr;
}
