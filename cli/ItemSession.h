#pragma once

#include "driver/ViewDriver.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class QDialog;
class QTextStream;
class TQXView;

// What the item commands (props, rename, rows) share: their arguments
//   COMMAND REPO --path P [--path P] [view settings] [--timeout SECONDS]
// and a view of the repository in which the nodes named by the paths are
// found, opened on the way and selected in the order given. A path that
// leads nowhere is bad usage (exit status 2).
class TQXItemSession {
public:
    struct Shape {
        QString Command;
        QString Synopsis;    // after "korvane-cli COMMAND REPO"
        QString Description; // what the command does, for its help
        int Paths = 1;       // how many --path options it takes
        bool Rename = false; // whether it takes --name and --icon
        TQXViewSettings Defaults;
    };

    // Throws EQXUsageError for arguments that cannot be used.
    TQXItemSession(const Shape& shape, const QStringList& arguments);
    ~TQXItemSession();

    static QString Help(const Shape& shape);
    bool HelpRequested() const { return FHelpRequested; }

    // Opens the view, finds and selects the nodes; notes go to `err`.
    void Open(QTextStream& err);

    // Runs one of the view's commands with the dialog it opens handed to
    // `dialog`; the messages the view showed meanwhile.
    QStringList RunCommand(const std::function<void(TQXView&)>& command,
                           const std::function<void(QDialog&)>& dialog);

    TQXViewDriver& Driver() { return *FDriver; }
    const QList<TQXTreeNode*>& Nodes() const { return FNodes; }
    const QStringList& PathTexts() const { return FPathTexts; }
    const QString& Name() const { return FName; }
    int Icon() const { return FIcon; } // -1 when not given

private:
    TQXTreeNode* Find(const QStringList& texts, const QString& pathText);

    Shape FShape;
    bool FHelpRequested = false;
    QString FRepository;
    TQXViewSettings FSettings;
    int FTimeout = -1;
    QStringList FPathTexts;
    QString FName;
    int FIcon = -1;
    std::unique_ptr<TQXViewDriver> FDriver;
    QList<TQXTreeNode*> FNodes;
};
