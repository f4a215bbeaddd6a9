#include "FormCommand.h"

#include "UsageError.h"

#include "formshow/FormBuilder.h"
#include "formshow/FormShow.h"
#include "repository/TreeItems.h"
#include "repository/WhereText.h"
#include "sqlaccess/RepositoryConnection.h"
#include "sqlaccess/SqlDataAccess.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPixmap>
#include <QSaveFile>
#include <QTextStream>

#include <algorithm>

namespace {

constexpr int GridColumns = 80;
constexpr int GridLines = 24;

struct TFormOptions {
    QString Repository;
    QString Object;
    QString File;
    QString Format = QStringLiteral("text");
    QString Png;
    bool Help = false;
};

TFormOptions Parse(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOption({QStringLiteral("object"), QString(), QStringLiteral("NAME")});
    parser.addOption({QStringLiteral("file"), QString(), QStringLiteral("NAME")});
    parser.addOption({QStringLiteral("format"), QString(), QStringLiteral("json|text")});
    parser.addOption({QStringLiteral("png"), QString(), QStringLiteral("FILE")});
    parser.addOption({QStringLiteral("help"), QString()});
    if (!parser.parse(QStringList{QStringLiteral("form")} + arguments))
        throw EQXUsageError(parser.errorText());
    TFormOptions options;
    options.Help = parser.isSet(QStringLiteral("help"));
    if (options.Help)
        return options;
    const QStringList positional = parser.positionalArguments();
    if (positional.size() != 1)
        throw EQXUsageError(QStringLiteral("form takes one repository"));
    options.Repository = positional.constFirst();
    options.Object = parser.value(QStringLiteral("object"));
    if (options.Object.isEmpty())
        throw EQXUsageError(QStringLiteral("form needs --object NAME"));
    options.File = parser.value(QStringLiteral("file"));
    options.Png = parser.value(QStringLiteral("png"));
    if (parser.isSet(QStringLiteral("format")))
        options.Format = parser.value(QStringLiteral("format")).toLower();
    if (options.Format != QLatin1String("json") && options.Format != QLatin1String("text"))
        throw EQXUsageError(QStringLiteral("unknown format '") +
                            parser.value(QStringLiteral("format")) +
                            QStringLiteral("' (one of: json, text)"));
    return options;
}

// The object named `name`, in the file named `file` when given; a name that
// is not found, or found in several files, is a usage error.
TQXItem FindObject(TQXDataAccessInterface& access, const QString& name, const QString& file) {
    TQXTableRef files = access.GetTableRef(QStringLiteral("QXFILE"));
    TQXFieldRef fileID = access.GetFieldRef(files, QStringLiteral("QXFileID"));
    TQXFieldRef fileName = access.GetFieldRef(files, QStringLiteral("QXFileName"));
    TQXTableRef objects = access.GetTableRef(QStringLiteral("QXOBJECT"));
    TQXFieldRef objectFile = access.GetFieldRef(objects, QStringLiteral("QXFileID"));
    TQXFieldRef objectID = access.GetFieldRef(objects, QStringLiteral("QXObjectID"));

    QList<qint32> inFiles;
    if (!file.isEmpty()) {
        for (bool found = access.SelectRecords(files, where::TextEquals("QXFileName", file)); found;
             found = access.NextRecord(files))
            inFiles << VariantToInt(access.GetFieldValue(files, fileID));
        if (inFiles.isEmpty())
            throw EQXUsageError(QStringLiteral("file not found: ") + file);
    }
    QString condition = where::TextEquals("QXObjectName", name);
    if (!inFiles.isEmpty())
        condition += QStringLiteral(" AND ") + where::In("QXFileID", inFiles, QStringLiteral(", "));
    QList<std::pair<qint32, qint32>> found;
    for (bool more = access.SelectRecords(objects, condition); more;
         more = access.NextRecord(objects))
        found << std::pair(VariantToInt(access.GetFieldValue(objects, objectFile)),
                           VariantToInt(access.GetFieldValue(objects, objectID)));
    if (found.isEmpty())
        throw EQXUsageError(QStringLiteral("object not found: ") + name +
                            (file.isEmpty() ? QString() : QStringLiteral(" in ") + file));
    if (found.size() > 1) {
        QStringList names;
        for (const auto& [foundFile, object] : found) {
            Q_UNUSED(object);
            if (access.SelectRecords(files,
                                     QStringLiteral("QXFileID = ") + where::Number(foundFile)))
                names << VariantToText(access.GetFieldValue(files, fileName));
        }
        throw EQXUsageError(QStringLiteral("object ") + name + QStringLiteral(" is in ") +
                            QString::number(found.size()) +
                            QStringLiteral(" places; name one with --file (") +
                            names.join(QStringLiteral(", ")) + QLatin1Char(')'));
    }
    return TQXItem(found.constFirst().first, 0, 0, 0, 0, found.constFirst().second, 0, 0, 0);
}

QString Json(const QString& text) {
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

void WriteJson(const QString& object, const TQXFormLayout& layout, QTextStream& out) {
    out << "{\n  \"object\": " << Json(object) << ",\n";
    out << "  \"supported\": " << (layout.Unsupported ? "false" : "true") << ",\n";
    QStringList skipped;
    for (const QString& name : layout.NotUnderstood)
        skipped << Json(name);
    out << "  \"notUnderstood\": [" << skipped.join(QStringLiteral(", ")) << "],\n";
    out << "  \"boxes\": [";
    for (std::size_t i = 0; i < layout.Boxes.size(); ++i) {
        const TQXFormBox& box = layout.Boxes[i];
        out << (i ? ",\n" : "\n") << "    {\"top\": " << box.Top << ", \"left\": " << box.Left
            << ", \"width\": " << box.Width << ", \"height\": " << box.Height
            << ", \"text\": " << Json(box.Text) << ", \"hint\": " << Json(box.Hint)
            << ", \"constant\": " << (box.Constant ? "true" : "false")
            << ", \"visible\": " << (box.Visible ? "true" : "false") << "}";
    }
    out << (layout.Boxes.empty() ? "]\n}\n" : "\n  ]\n}\n");
}

// The visible boxes on a character grid, one character per column and one
// line per screen line: constants as they read, fields filled with '_'
// behind their text. Lines and columns beyond the grid are cut off.
void WriteText(const TQXFormLayout& layout, QTextStream& out) {
    int lines = GridLines;
    for (const TQXFormBox& box : layout.Boxes)
        if (box.Visible)
            lines = std::max(lines, box.Top / TQXFormBuilder::LinePixels);
    QStringList grid(lines, QString(GridColumns, QLatin1Char(' ')));
    for (const TQXFormBox& box : layout.Boxes) {
        const int line = box.Top / TQXFormBuilder::LinePixels - 1;
        const int column = box.Left / TQXFormBuilder::ColumnPixels - 1;
        const int width = box.Width / TQXFormBuilder::ColumnPixels;
        if (!box.Visible || line < 0 || column < 0)
            continue;
        // A literal's leading blank stands where the field's attribute is,
        // as in the window: the text may take one column more.
        QString shown = box.Text.left(width + (box.Text.startsWith(QLatin1Char(' ')) ? 1 : 0));
        if (!box.Constant)
            shown = shown.leftJustified(width, QLatin1Char('_'));
        for (int i = 0; i < shown.size() && column + i < GridColumns; ++i)
            grid[line][column + i] = shown[i];
    }
    const QString rule =
        QLatin1Char('+') + QString(GridColumns, QLatin1Char('-')) + QLatin1Char('+');
    out << rule << "\n";
    for (const QString& line : grid)
        out << '|' << line << "|\n";
    out << rule << "\n";
    if (!layout.StatusText().isEmpty())
        out << layout.StatusText() << "\n";
}

void WritePng(TQXFormShow& form, const QString& file) {
    form.setAttribute(Qt::WA_DontShowOnScreen);
    form.show();
    QApplication::processEvents();
    const QPixmap picture = form.grab();
    QSaveFile out(file);
    if (picture.isNull() || !out.open(QIODevice::WriteOnly) || !picture.save(&out, "PNG") ||
        !out.commit())
        throw EQXError(QStringLiteral("could not write ") + file + QStringLiteral(": ") +
                       out.errorString());
}

} // namespace

QString TQXFormCommand::Summary() const {
    return QStringLiteral("draw a screen map: korvane-cli form REPO --object NAME [options]");
}

QString TQXFormCommand::Help() const {
    return QStringLiteral(
        "usage: korvane-cli form REPO --object NAME [--file NAME] [--format json|text]\n"
        "                        [--png FILE]\n\n"
        "Draws the stored screen map NAME (a CICS BMS map or a VisualAge Generator map)\n"
        "as the form viewer does: one read-only box per field, 20 pixels per line and\n"
        "10 per column.\n\n"
        "options:\n"
        "  --object NAME       the map's object name\n"
        "  --file NAME         the file that holds it, where the name is in several\n"
        "  --format json|text  json: the boxes in creation order with top, left, width,\n"
        "                      height, text, hint, constant (button-face colour) and\n"
        "                      visible; text: the visible boxes on an 80-column grid\n"
        "                      (text)\n"
        "  --png FILE          also render the window off screen into FILE\n"
        "  --help              show this text\n\n"
        "exit status: 0 drawn (also a map of a language the viewer does not draw: its\n"
        "one box says so), 1 failure (a position that is not a number), 2 bad usage or\n"
        "an object that is not found\n");
}

int TQXFormCommand::Run(const QStringList& arguments, QTextStream& out, QTextStream&) {
    const TFormOptions options = Parse(arguments);
    if (options.Help) {
        out << Help();
        return ExitOk;
    }
    const RepositoryLocation location = RepositoryLocation::Parse(options.Repository);
    if (location.kind == RepositoryLocation::Kind::SQLite && !QFileInfo(location.filePath).isFile())
        throw EQXUsageError(QStringLiteral("repository not found: ") + options.Repository);
    SqlDataAccess access(options.Repository);
    const TQXItem item = FindObject(access, options.Object, options.File);
    TQXFormShow form(nullptr, &access, item);
    form.setWindowTitle(options.Object);
    if (options.Format == QLatin1String("json"))
        WriteJson(options.Object, form.Layout(), out);
    else
        WriteText(form.Layout(), out);
    if (!options.Png.isEmpty())
        WritePng(form, options.Png);
    return ExitOk;
}
