#include "CommandLine.h"

#include "sqlaccess/RepositoryConnection.h"

#include <QCommandLineParser>
#include <QFileInfo>

#include <cstdio>

TQXCommandLine TQXCommandLine::Parse(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Korvane View: browse the repository of a legacy business estate."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        QStringLiteral("Render the first view, refreshed, into a PNG file and exit."),
        QStringLiteral("FILE"));
    const QCommandLineOption settings(
        QStringLiteral("settings"),
        QStringLiteral("Read and write connections and the tree font in this settings file."),
        QStringLiteral("FILE"));
    parser.addOption(screenshot);
    parser.addOption(settings);
    parser.addPositionalArgument(
        QStringLiteral("repository"),
        QStringLiteral("A SQLite repository file, or a PostgreSQL connection string "
                       "(postgresql://user@host/db or \"host=... dbname=...\")."),
        QStringLiteral("[repository]"));

    TQXCommandLine result;
    if (!parser.parse(arguments)) {
        result.Error = parser.errorText();
        return result;
    }
    if (parser.isSet(help)) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        result.HelpShown = true;
        return result;
    }
    const QStringList positional = parser.positionalArguments();
    if (positional.size() > 1) {
        result.Error = QStringLiteral("only one repository can be opened from the command line");
        return result;
    }
    if (!positional.isEmpty())
        result.Repository = positional.constFirst();
    result.ScreenshotFile = parser.value(screenshot);
    result.SettingsFile = parser.value(settings);
    return result;
}

bool TQXCommandLine::RepositoryMissing() const {
    if (Repository.isEmpty())
        return false;
    const RepositoryLocation location = RepositoryLocation::Parse(Repository);
    return location.kind == RepositoryLocation::Kind::SQLite &&
           !QFileInfo(location.filePath).isFile();
}
