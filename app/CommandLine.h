#pragma once

#include <QString>
#include <QStringList>

// What korvane was asked to do:
//   korvane [--settings FILE] [--screenshot FILE] [REPOSITORY]
// REPOSITORY is a SQLite file path or a PostgreSQL connection string.
struct TQXCommandLine {
    QString Repository;
    QString ScreenshotFile;
    QString SettingsFile;
    bool HelpShown = false;
    QString Error; // set when the arguments cannot be used

    static TQXCommandLine Parse(const QStringList& arguments);
    // Whether the repository names a SQLite file that does not exist.
    bool RepositoryMissing() const;
};
