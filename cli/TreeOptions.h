#pragma once

#include "FilterOptions.h"

#include "driver/ViewDriver.h"

#include <QString>
#include <QStringList>

// The arguments of "korvane-cli tree", checked and with names made canonical:
//   tree REPO [--type T] [--direction D] [--level L] [--limit N] [--option]
//        [--depth D | --expand-all] [--path P] [--format F] [--yes] [--max-nodes N]
//        [--timeout SECONDS] [--filter "ATTRIBUTE OPERATOR VALUE" [--or] ...]
//        [--case-sensitive] [--filter-on | --filter-off]
//        [--select P]... [--track P]... [--save FILE]
//   tree --open FILE [REPO] [the options above but the settings]
class TQXTreeOptions {
public:
    // Throws EQXUsageError for arguments that cannot be used.
    static TQXTreeOptions Parse(const QStringList& arguments);
    // The usage text: synopsis and every option.
    static QString Help();
    // The texts of a --path: "A/B\/C" gives "A" and "B/C"; throws EQXUsageError.
    static QStringList SplitPath(const QString& path);

    bool HelpRequested = false;
    QString Repository;
    TQXViewSettings Settings;
    int Depth = 0;    // every node above it is opened; huge for --expand-all
    QStringList Path; // texts of the nodes to open, one per depth
    QString PathText; // as given
    QString Format = QStringLiteral("text");
    bool AnswerYes = false;
    bool Reference = false;  // the record-by-record reference path
    int MaxNodes = 100000;   // opening stops once the tree holds as many nodes
    int TimeoutSeconds = -1; // for connecting and each statement; -1: as the settings say
    TQXFilterOptions Filter;
    // View documents: the one to print instead of refreshing, the one to
    // write; the paths to select and to add as tracks.
    QString OpenFile;
    QString SaveFile;
    QList<QStringList> Selects;
    QList<QStringList> Tracks;
};
