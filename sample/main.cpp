// korvane-sample: writes the sample estate into a new SQLite file or a
// PostgreSQL database.

#include "BuildTargets.h"
#include "SampleEstate.h"

#include "repository/Errors.h"
#include "sqlaccess/RepositoryConnection.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <optional>

namespace {

constexpr int ExitOk = 0;
constexpr int ExitFailure = 1;
constexpr int ExitUsage = 2;

const QString ConnectionName = QStringLiteral("korvane-sample");

std::atomic_bool Interrupted{false};

extern "C" void OnSignal(int) {
    Interrupted = true;
}

void Print(FILE* stream, const QString& text) {
    std::fputs(text.toLocal8Bit().constData(), stream);
    std::fputc('\n', stream);
    std::fflush(stream);
}

QString Usage() {
    return QStringLiteral(
               "Usage: korvane-sample [--scale N] [--seed S] [--force] TARGET\n"
               "\n"
               "Writes the sample estate of a bank and insurer (COBOL programs, copy members,\n"
               "CICS BMS and VisualAge Generator maps, JCL, SQL tables, Java classes) into a\n"
               "new repository.\n"
               "\n"
               "  TARGET       a SQLite file path, or a PostgreSQL connection string:\n"
               "               postgresql://user@host:5432/dbname or \"host=... dbname=...\"\n"
               "  --scale N    1 (the default) writes the demo estate of a few dozen files;\n"
               "               each further unit adds a regional copy of the banking and\n"
               "               insurance suite. --scale %1 writes at least 1,000,000 rows\n"
               "               (QXROW) and 5,000,000 words (QXWORD).\n"
               "  --seed S     seed of the generated content (default 1); the same scale and\n"
               "               seed always give the same estate\n"
               "  --force      replace an existing SQLite file, or the repository tables a\n"
               "               PostgreSQL schema already has; they stay as they were until\n"
               "               the new estate is complete\n"
               "  -h, --help   show this text\n"
               "\n"
               "Exit status: 0 written, 1 failed, 2 bad usage.")
        .arg(SampleEstateMillionRowScale);
}

struct TArguments {
    int scale = 1;
    quint32 seed = 1;
    bool force = false;
    QString target;
};

// Parses the command line; returns an error text for bad usage.
QString Parse(const QStringList& arguments, TArguments& parsed, bool& help) {
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        QString argument = arguments[i];
        QString value;
        bool hasValue = false;
        if (argument.startsWith(QLatin1String("--")) && argument.contains(QLatin1Char('='))) {
            value = argument.section(QLatin1Char('='), 1);
            argument = argument.section(QLatin1Char('='), 0, 0);
            hasValue = true;
        }
        auto takeValue = [&]() -> std::optional<QString> {
            if (hasValue)
                return value;
            if (i + 1 >= arguments.size())
                return std::nullopt;
            return arguments[++i];
        };
        if (argument == QLatin1String("-h") || argument == QLatin1String("--help")) {
            help = true;
        } else if (argument == QLatin1String("--force")) {
            parsed.force = true;
        } else if (argument == QLatin1String("--scale")) {
            const auto text = takeValue();
            bool ok = false;
            const int scale = text ? text->toInt(&ok) : 0;
            if (!ok || scale < 1 || scale > 100000)
                return QStringLiteral("--scale needs a whole number from 1 to 100000");
            parsed.scale = scale;
        } else if (argument == QLatin1String("--seed")) {
            const auto text = takeValue();
            bool ok = false;
            const quint32 seed = text ? text->toUInt(&ok) : 0;
            if (!ok)
                return QStringLiteral("--seed needs a whole number from 0 to 4294967295");
            parsed.seed = seed;
        } else if (argument.startsWith(QLatin1Char('-')) && argument.size() > 1) {
            return QStringLiteral("unknown option ") + argument;
        } else if (parsed.target.isEmpty()) {
            parsed.target = arguments[i];
        } else {
            return QStringLiteral("only one TARGET can be given");
        }
    }
    if (!help && parsed.target.isEmpty())
        return QStringLiteral("no TARGET given");
    return QString();
}

void PrintCounts(const SampleEstateCounts& counts) {
    Print(stdout, QStringLiteral("  files         %1").arg(counts.files));
    Print(stdout, QStringLiteral("  objects       %1").arg(counts.objects));
    Print(stdout, QStringLiteral("  entries       %1").arg(counts.entries));
    Print(stdout, QStringLiteral("  rows          %1").arg(counts.rows));
    Print(stdout, QStringLiteral("  words         %1").arg(counts.words));
    Print(stdout, QStringLiteral("  dependencies  %1").arg(counts.dependencies));
    Print(stdout, QStringLiteral("  data flows    %1").arg(counts.dataflows));
    Print(stdout, QStringLiteral("  packages      %1").arg(counts.packages));
    Print(stdout, QStringLiteral("  attributes    %1").arg(counts.attributes));
    Print(stdout, QStringLiteral("  loads         %1").arg(counts.loads));
}

SampleEstateOptions Options(const TArguments& arguments) {
    SampleEstateOptions options;
    options.scale = arguments.scale;
    options.seed = arguments.seed;
    options.progress = [](const QString& step) {
        Print(stderr, QStringLiteral("korvane-sample: ") + step);
    };
    options.cancelled = [] { return Interrupted.load(); };
    return options;
}

const QStringList RepositoryTables{QStringLiteral("QXFILE"),     QStringLiteral("QXOBJECT"),
                                   QStringLiteral("QXENTRY"),    QStringLiteral("QXROW"),
                                   QStringLiteral("QXWORD"),     QStringLiteral("QXDEPENDENCIES"),
                                   QStringLiteral("QXPACKAGE"),  QStringLiteral("QXATTRIBUTE"),
                                   QStringLiteral("QXDATAFLOW"), QStringLiteral("QXLOAD")};

// Closes the connection however the build ends.
struct TConnectionCloser {
    ~TConnectionCloser() { CloseRepositoryDatabase(ConnectionName); }
};

// Builds into a partial file next to the target and renames it at the end,
// so that an interrupted or failed run leaves no file that looks like a
// repository, and the target as it was.
SampleEstateCounts WriteSQLite(const TArguments& arguments, const QString& path) {
    const QFileInfo target(path);
    if (target.isDir())
        throw EQXError(path + QStringLiteral(" is a directory"));
    if (target.exists() && !arguments.force)
        throw EQXError(path + QStringLiteral(" exists already; use --force to replace it"));
    const QDir directory = target.absoluteDir();
    if (!directory.exists())
        throw EQXError(QStringLiteral("The folder ") + directory.path() +
                       QStringLiteral(" does not exist"));

    TPartialFile::RemoveStale(path);
    TPartialFile partial(path);
    SampleEstateCounts counts;
    {
        TConnectionCloser closer;
        RepositoryLocation location;
        location.filePath = partial.Path();
        QSqlDatabase db =
            OpenRepositoryDatabase(location, ConnectionName, OpenMode::CreateIfMissing);
        counts = BuildSampleEstate(db, Options(arguments));
    }
    partial.PutInPlace();
    return counts;
}

// Builds in a schema of its own and swaps it in at the end: the estate that
// was there stays whole until the new one is complete.
SampleEstateCounts WritePostgreSQL(const TArguments& arguments,
                                   const RepositoryLocation& location) {
    TConnectionCloser closer;
    QSqlDatabase db = OpenRepositoryDatabase(location, ConnectionName, OpenMode::ExistingOnly);
    TSchemaBuild build(db, RepositoryTables, arguments.force);
    const SampleEstateCounts counts = BuildSampleEstate(db, Options(arguments));
    build.SwapIn();
    return counts;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    TArguments arguments;
    bool help = false;
    const QString error = Parse(QCoreApplication::arguments(), arguments, help);
    if (help) {
        Print(stdout, Usage());
        return ExitOk;
    }
    if (!error.isEmpty()) {
        Print(stderr, QStringLiteral("korvane-sample: ") + error);
        Print(stderr, Usage());
        return ExitUsage;
    }

    std::signal(SIGINT, OnSignal);
    std::signal(SIGTERM, OnSignal);
    // Loading and indexing a large estate takes minutes per statement; only
    // connecting is limited.
    RepositoryTimeouts timeouts;
    timeouts.statementSeconds = 0;
    RepositoryTimeouts::SetCurrent(timeouts);
    QElapsedTimer timer;
    timer.start();
    try {
        const RepositoryLocation location = RepositoryLocation::Parse(arguments.target);
        const bool sqlite = location.kind == RepositoryLocation::Kind::SQLite;
        const SampleEstateCounts counts = sqlite ? WriteSQLite(arguments, location.filePath)
                                                 : WritePostgreSQL(arguments, location);
        QString size;
        if (sqlite)
            size = QStringLiteral(", %1 MB").arg(
                double(QFileInfo(location.filePath).size()) / (1024.0 * 1024.0), 0, 'f', 1);
        Print(stdout, QStringLiteral("Sample estate written to %1 (scale %2, seed %3) in %4 s%5:")
                          .arg(location.Display())
                          .arg(arguments.scale)
                          .arg(arguments.seed)
                          .arg(double(timer.elapsed()) / 1000.0, 0, 'f', 1)
                          .arg(size));
        PrintCounts(counts);
        return ExitOk;
    } catch (const std::exception& e) {
        Print(stderr, QStringLiteral("korvane-sample: ") + ExceptionMessage(e));
        return ExitFailure;
    }
}
