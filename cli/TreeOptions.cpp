#include "TreeOptions.h"

#include "filter/FilterChoices.h"

#include "TreeWriter.h"
#include "UsageError.h"

#include <QCommandLineParser>

#include <climits>

namespace {

const QStringList Types{QStringLiteral("Distribution"), QStringLiteral("Dependencies")};
const QStringList Directions{QStringLiteral("TopDown"), QStringLiteral("BottomUp")};

struct OptionDescription {
    const char* Name;
    const char* Value; // null for a switch
    const char* Text;
};

const OptionDescription Descriptions[] = {
    {"type", "Distribution|Dependencies", "view type (Distribution)"},
    {"direction", "TopDown|BottomUp", "track direction (TopDown)"},
    {"level", "System|Computer|...|Data",
     "view by: System, Computer, Application, Package, Object, Entry, Code or Data (System)"},
    {"limit", "N", "root-item limit (100)"},
    {"option", nullptr,
     "check the option box (Dependencies TopDown by Object or Entry: show them sequentially); "
     "unchecked otherwise"},
    {"depth", "D", "open every node down to depth D; 0 shows the root items only (0)"},
    {"expand-all", nullptr, "open every node, up to --max-nodes"},
    {"path", "TEXT/TEXT/...",
     "open the nodes whose texts match, one text per depth; write a '/' inside a text as "
     "'\\/' and a backslash as '\\\\'"},
    {"format", "text|json|csv", "output format (text)"},
    {"yes", nullptr, "answer Yes to the questions the view asks (No otherwise)"},
    {"max-nodes", "N", "stop opening nodes once the tree holds N nodes (100000)"},
    {"reference", nullptr,
     "read record by record as the view's algorithms are written, instead of the set-based "
     "reads (the same tree, for comparison)"},
    {"timeout", "SECONDS",
     "wait at most SECONDS for the repository: to connect, and for each statement or lock it "
     "waits for; 0 waits without limit ([Timeouts] of the settings file, else 10 to connect "
     "and 30 per statement)"},
    {"filter", "\"ATTRIBUTE OPERATOR VALUE\"",
     "a condition of the root-item filter, e.g. \"Objects Name begins with PAY\"; repeatable, "
     "conditions are joined by AND (see filters below); switches the filter on"},
    {"or", nullptr, "between two --filter options: join them with OR instead"},
    {"case-sensitive", nullptr, "compare the filter's values case sensitively"},
    {"filter-on", nullptr, "switch the root-item filter on (also without conditions)"},
    {"filter-off", nullptr, "switch the root-item filter off (its conditions are kept, not used)"},
    {"open", "FILE.kvv",
     "print the tree stored in a view document instead of refreshing; REPO may then be left "
     "out, and the view settings options do not apply"},
    {"save", "FILE.kvv", "write the view (settings, tree, selection, tracks) to a view document"},
    {"select", "TEXT/TEXT/...",
     "select the node at the end of the path, opening the nodes before it; repeatable"},
    {"track", "TEXT/TEXT/...",
     "add a track made of the nodes along the path, opening them; repeatable"},
    {"help", nullptr, "show this text"},
};

// The canonical spelling of a name from `names`, matched without regard to case.
QString Choose(const QString& what, const QString& given, const QStringList& names) {
    for (const QString& name : names)
        if (name.compare(given, Qt::CaseInsensitive) == 0)
            return name;
    throw EQXUsageError(QStringLiteral("unknown %1 '%2' (one of: %3)")
                            .arg(what, given, names.join(QStringLiteral(", "))));
}

int Number(const QString& option, const QString& given, int least) {
    bool ok = false;
    const int value = given.toInt(&ok);
    if (!ok || value < least)
        throw EQXUsageError(QStringLiteral("--%1 needs a whole number of at least %2, not '%3'")
                                .arg(option)
                                .arg(least)
                                .arg(given));
    return value;
}

} // namespace

// "A/B\/C" gives "A" and "B/C"; "\\" stands for a backslash.
QStringList TQXTreeOptions::SplitPath(const QString& path) {
    QStringList texts;
    QString text;
    for (qsizetype i = 0; i < path.size(); ++i) {
        const QChar c = path.at(i);
        if (c == QLatin1Char('\\')) {
            if (i + 1 == path.size() ||
                (path.at(i + 1) != QLatin1Char('/') && path.at(i + 1) != QLatin1Char('\\')))
                throw EQXUsageError(
                    QStringLiteral("--path: write '\\/' for a '/' in a text and '\\\\' for a "
                                   "backslash: '%1'")
                        .arg(path));
            text += path.at(++i);
        } else if (c == QLatin1Char('/')) {
            texts << text;
            text.clear();
        } else {
            text += c;
        }
    }
    texts << text;
    if (texts.contains(QString()))
        throw EQXUsageError(QStringLiteral("--path has an empty text: '%1'").arg(path));
    return texts;
}

namespace {

// Words filled into lines of at most 90 columns, every line after the first
// indented by `indent`.
QString Wrapped(const QString& text, int indent) {
    QString result;
    int column = indent;
    for (const QString& word : text.split(QLatin1Char(' '))) {
        if (column > indent && column + 1 + word.size() > 90) {
            result += QLatin1Char('\n') + QString(indent, QLatin1Char(' '));
            column = indent;
        } else if (column > indent) {
            result += QLatin1Char(' ');
            ++column;
        }
        result += word;
        column += static_cast<int>(word.size());
    }
    return result + QLatin1Char('\n');
}

void ParseFilter(const QCommandLineParser& parser, const QStringList& arguments,
                 TQXFilterOptions& filter) {
    if (parser.isSet(QStringLiteral("filter-on")) && parser.isSet(QStringLiteral("filter-off")))
        throw EQXUsageError(QStringLiteral("--filter-on and --filter-off exclude each other"));
    if (parser.isSet(QStringLiteral("filter-on")) || parser.isSet(QStringLiteral("filter-off")))
        filter.On = parser.isSet(QStringLiteral("filter-on"));
    filter.CaseSensitive = parser.isSet(QStringLiteral("case-sensitive"));
    QStringList valueOptions;
    for (const OptionDescription& described : Descriptions)
        if (described.Value)
            valueOptions << QLatin1String(described.Name);
    const QStringList conditions = parser.values(QStringLiteral("filter"));
    const QList<bool> orBefore = TQXFilterOptions::OrBeforeEachFilter(arguments, valueOptions);
    for (qsizetype i = 0; i < conditions.size(); ++i) {
        TQXFilterOptions::Condition condition = TQXFilterOptions::ParseCondition(conditions.at(i));
        condition.OrPrevious = orBefore.value(i);
        filter.Conditions << condition;
    }
}

} // namespace

QString TQXTreeOptions::Help() {
    QString text = QStringLiteral(
        "usage: korvane-cli tree REPO [options]\n"
        "       korvane-cli tree --open FILE.kvv [REPO] [options]\n\n"
        "Refreshes the view of REPO (a SQLite repository file or a PostgreSQL connection\n"
        "string) with the given settings, opens nodes as asked and prints the tree; or\n"
        "prints the tree of a view document, connected to REPO when given.\n\n"
        "options:\n");
    for (const OptionDescription& described : Descriptions) {
        QString left = QStringLiteral("--") + QLatin1String(described.Name);
        if (described.Value)
            left += QLatin1Char(' ') + QLatin1String(described.Value);
        text +=
            QStringLiteral("  %1  ").arg(left, -34) + Wrapped(QLatin1String(described.Text), 38);
    }
    text += QStringLiteral(
        "\nformats:\n"
        "  text  one node per line, indented two blanks per depth: the text, then for nodes\n"
        "        with an item, separated by tabs, the image index and the item's identifiers\n"
        "        (file system computer application package object entry row word, or for a\n"
        "        variable: text1 text2 ownerFile ownerObject ownerEntry file object entry row\n"
        "        word language)\n"
        "  json  {\"filter\": {...}, \"nodes\": [...]}: the root-item filter in force (on,\n"
        "        caseSensitive, conditions with joint, attribute, operator and value), then\n"
        "        each node with text, image, item (named identifiers, or null), expandable\n"
        "        (it still has unopened children) and children\n"
        "  csv   a header, then one row per node in tree order: depth, text, image,\n"
        "        expandable and the identifiers (RFC 4180)\n"
        "\nfilters: --filter \"ATTRIBUTE OPERATOR VALUE\", VALUE being the rest as typed;\n");
    text += QStringLiteral("  ATTRIBUTE one of: ") +
            Wrapped(filterchoice::AttributeTexts().join(QStringLiteral(", ")), 2);
    text += QStringLiteral("  OPERATOR one of: ") +
            Wrapped(filterchoice::OperatorTexts().join(QStringLiteral(", ")), 2);
    text += QStringLiteral(
        "\nexit status: 0 success, 1 failure (repository, refresh, path not found),\n"
        "2 bad usage (arguments, names, a missing repository file)\n");
    return text;
}

TQXTreeOptions TQXTreeOptions::Parse(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    for (const OptionDescription& described : Descriptions) {
        QStringList names{QLatin1String(described.Name)};
        if (names.constFirst() == QLatin1String("help"))
            names << QStringLiteral("h");
        QCommandLineOption option(names, QLatin1String(described.Text));
        if (described.Value)
            option.setValueName(QLatin1String(described.Value));
        parser.addOption(option);
    }
    if (!parser.parse(QStringList{QStringLiteral("tree")} + arguments))
        throw EQXUsageError(parser.errorText());

    TQXTreeOptions options;
    if (parser.isSet(QStringLiteral("help"))) {
        options.HelpRequested = true;
        return options;
    }
    auto value = [&](const char* name) { return parser.value(QLatin1String(name)); };
    auto isSet = [&](const char* name) { return parser.isSet(QLatin1String(name)); };
    options.OpenFile = value("open");
    options.SaveFile = value("save");
    const QStringList positional = parser.positionalArguments();
    if (positional.isEmpty() && options.OpenFile.isEmpty())
        throw EQXUsageError(QStringLiteral("tree needs a repository"));
    if (positional.size() > 1)
        throw EQXUsageError(QStringLiteral("tree takes one repository, not '%1'")
                                .arg(positional.join(QStringLiteral("' '"))));
    options.Repository = positional.value(0);

    for (const char* name : {"type", "direction", "level", "limit", "depth", "path", "format",
                             "max-nodes", "timeout", "open", "save"})
        if (parser.values(QLatin1String(name)).size() > 1)
            throw EQXUsageError(QStringLiteral("--%1 is given more than once").arg(name));
    if (!options.OpenFile.isEmpty())
        for (const char* name : {"type", "direction", "level", "limit", "option"})
            if (isSet(name))
                throw EQXUsageError(
                    QStringLiteral("--%1 does not apply to --open: the document has its settings")
                        .arg(name));
    for (const QString& path : parser.values(QStringLiteral("select")))
        options.Selects << SplitPath(path);
    for (const QString& path : parser.values(QStringLiteral("track"))) {
        options.Tracks << SplitPath(path);
        if (options.Tracks.last().size() < 2)
            throw EQXUsageError(
                QStringLiteral("--track needs a path of at least two texts: '%1'").arg(path));
    }

    if (isSet("type"))
        options.Settings.Type = Choose(QStringLiteral("view type"), value("type"), Types) ==
                                        QLatin1String("Dependencies")
                                    ? TQXViewType::Dependencies
                                    : TQXViewType::Distribution;
    if (isSet("direction"))
        options.Settings.Direction = Choose(QStringLiteral("direction"), value("direction"),
                                            Directions) == QLatin1String("TopDown")
                                         ? TQXDirection::TopDown
                                         : TQXDirection::BottomUp;
    if (isSet("level"))
        options.Settings.Level =
            *level::FromName(Choose(QStringLiteral("level"), value("level"), level::Names()));
    if (isSet("limit"))
        options.Settings.LimitText =
            QString::number(Number(QStringLiteral("limit"), value("limit"), 1));
    options.Settings.Option = isSet("option");

    if (isSet("depth") && isSet("expand-all"))
        throw EQXUsageError(QStringLiteral("--depth and --expand-all exclude each other"));
    if (isSet("depth"))
        options.Depth = Number(QStringLiteral("depth"), value("depth"), 0);
    if (isSet("expand-all"))
        options.Depth = INT_MAX;
    if (isSet("max-nodes"))
        options.MaxNodes = Number(QStringLiteral("max-nodes"), value("max-nodes"), 1);
    if (isSet("timeout"))
        options.TimeoutSeconds = Number(QStringLiteral("timeout"), value("timeout"), 0);
    if (isSet("path")) {
        options.PathText = value("path");
        options.Path = SplitPath(options.PathText);
    }
    if (isSet("format"))
        options.Format =
            Choose(QStringLiteral("format"), value("format"), TQXTreeWriter::Formats());
    options.AnswerYes = isSet("yes");
    ParseFilter(parser, arguments, options.Filter);
    options.Reference = isSet("reference");
    return options;
}
