#include "ItemSession.h"

#include "TreeOptions.h"
#include "UsageError.h"

#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "sqlaccess/RepositoryConnection.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QTextStream>

namespace {

QString Choose(const QString& what, const QString& given, const QStringList& names) {
    for (const QString& name : names)
        if (name.compare(given, Qt::CaseInsensitive) == 0)
            return name;
    throw EQXUsageError(QStringLiteral("unknown %1 '%2' (one of: %3)")
                            .arg(what, given, names.join(QStringLiteral(", "))));
}

int Number(const char* option, const QString& given, int least) {
    bool ok = false;
    const int value = given.toInt(&ok);
    if (!ok || value < least)
        throw EQXUsageError(QStringLiteral("--%1 needs a whole number of at least %2, not '%3'")
                                .arg(QLatin1String(option))
                                .arg(least)
                                .arg(given));
    return value;
}

} // namespace

TQXItemSession::TQXItemSession(const Shape& shape, const QStringList& arguments)
    : FShape(shape), FSettings(shape.Defaults) {
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    QStringList valued{"path", "type", "direction", "level", "limit", "timeout"};
    if (shape.Rename)
        valued << "name"
               << "icon";
    for (const QString& name : valued)
        parser.addOption(QCommandLineOption(name, QString(), QStringLiteral("value")));
    parser.addOption(QCommandLineOption(QStringList{QStringLiteral("help"), QStringLiteral("h")}));
    if (!parser.parse(QStringList{shape.Command} + arguments))
        throw EQXUsageError(parser.errorText());
    if (parser.isSet(QStringLiteral("help"))) {
        FHelpRequested = true;
        return;
    }
    const QStringList positional = parser.positionalArguments();
    if (positional.size() != 1)
        throw EQXUsageError(shape.Command + QStringLiteral(" needs one repository"));
    FRepository = positional.constFirst();
    for (const QString& name : valued)
        if (name != QLatin1String("path") && parser.values(name).size() > 1)
            throw EQXUsageError(QStringLiteral("--%1 is given more than once").arg(name));

    FPathTexts = parser.values(QStringLiteral("path"));
    if (FPathTexts.size() != shape.Paths)
        throw EQXUsageError(shape.Command + (shape.Paths == 1
                                                 ? QStringLiteral(" needs one --path")
                                                 : QStringLiteral(" needs two --path")));
    auto value = [&](const char* name) { return parser.value(QLatin1String(name)); };
    auto isSet = [&](const char* name) { return parser.isSet(QLatin1String(name)); };
    if (isSet("type"))
        FSettings.Type = Choose(QStringLiteral("view type"), value("type"),
                                {QStringLiteral("Distribution"), QStringLiteral("Dependencies")}) ==
                                 QLatin1String("Dependencies")
                             ? TQXViewType::Dependencies
                             : TQXViewType::Distribution;
    if (isSet("direction"))
        FSettings.Direction = Choose(QStringLiteral("direction"), value("direction"),
                                     {QStringLiteral("TopDown"), QStringLiteral("BottomUp")}) ==
                                      QLatin1String("TopDown")
                                  ? TQXDirection::TopDown
                                  : TQXDirection::BottomUp;
    if (isSet("level"))
        FSettings.Level =
            *level::FromName(Choose(QStringLiteral("level"), value("level"), level::Names()));
    if (isSet("limit"))
        FSettings.LimitText = QString::number(Number("limit", value("limit"), 1));
    if (isSet("timeout"))
        FTimeout = Number("timeout", value("timeout"), 0);
    if (shape.Rename) {
        if (!isSet("name"))
            throw EQXUsageError(QStringLiteral("rename needs --name"));
        FName = value("name");
        if (isSet("icon"))
            FIcon = Number("icon", value("icon"), 0);
    }
}

TQXItemSession::~TQXItemSession() = default;

QString TQXItemSession::Help(const Shape& shape) {
    QString text =
        QStringLiteral("usage: korvane-cli ") + shape.Command + QStringLiteral(" REPO ") +
        shape.Synopsis +
        QStringLiteral("\n          [--type Distribution|Dependencies] "
                       "[--direction TopDown|BottomUp]\n"
                       "          [--level System|Computer|...|Data] [--limit N] "
                       "[--timeout SECONDS]\n\n") +
        shape.Description +
        QStringLiteral("\n\nThe nodes are found in the view the settings describe (as for "
                       "'korvane-cli tree';\nthis command's defaults: ") +
        shape.Defaults.UserHint() +
        QStringLiteral("),\nopening the nodes on the way. --path texts are node texts "
                       "separated by '/'\n(a '/' inside a text is written '\\/').\n\n"
                       "exit status: 0 success, 1 failure (repository, write), 2 bad "
                       "usage (arguments,\na path not found, an item kind that does "
                       "not allow it)\n");
    return text;
}

void TQXItemSession::Open(QTextStream& err) {
    const RepositoryLocation location = RepositoryLocation::Parse(FRepository);
    if (location.kind == RepositoryLocation::Kind::SQLite && !QFileInfo(location.filePath).isFile())
        throw EQXUsageError(QStringLiteral("repository not found: %1").arg(FRepository));
    if (FTimeout >= 0) {
        RepositoryTimeouts timeouts;
        timeouts.connectSeconds = FTimeout;
        timeouts.statementSeconds = FTimeout;
        RepositoryTimeouts::SetCurrent(timeouts);
    }
    FDriver = std::make_unique<TQXViewDriver>(FRepository);
    if (!FDriver->RepositoryNotice().isEmpty())
        err << "korvane-cli: note: " << FDriver->RepositoryNotice() << "\n";
    FDriver->Apply(FSettings);
    FDriver->Refresh();
    for (const QString& pathText : std::as_const(FPathTexts))
        FNodes << Find(TQXTreeOptions::SplitPath(pathText), pathText);
    FDriver->Tree().Select(nullptr);
    for (TQXTreeNode* node : std::as_const(FNodes))
        FDriver->Tree().Select(node, true);
}

// The first node whose texts match the path, one text per depth; the nodes
// above it are opened.
TQXTreeNode* TQXItemSession::Find(const QStringList& texts, const QString& pathText) {
    TQXTreeControl& tree = FDriver->Tree();
    TQXTreeNode* found = nullptr;
    QStringList matched;
    for (const QString& text : texts) {
        if (found)
            FDriver->Expand(found);
        const int count = found ? found->ChildCount() : tree.RootCount();
        TQXTreeNode* next = nullptr;
        for (int i = 0; i < count && !next; ++i) {
            TQXTreeNode* candidate = found ? found->Child(i) : tree.Root(i);
            if (candidate->Text() == text)
                next = candidate;
        }
        if (!next)
            throw EQXUsageError(
                QStringLiteral("path not found: %1 (%2)")
                    .arg(pathText, matched.isEmpty()
                                       ? QStringLiteral("no root node '%1'").arg(text)
                                       : QStringLiteral("no node '%1' under '%2'")
                                             .arg(text, matched.join(QLatin1Char('/')))));
        matched << text;
        found = next;
    }
    return found;
}

QStringList TQXItemSession::RunCommand(const std::function<void(TQXView&)>& command,
                                       const std::function<void(QDialog&)>& dialog) {
    TQXScriptedUIServices& ui = FDriver->Ui();
    const qsizetype before = ui.Messages().size();
    ui.QueueDialog(dialog);
    command(FDriver->View());
    return ui.Messages().mid(before);
}
