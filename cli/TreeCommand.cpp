#include "TreeCommand.h"

#include "TreeOptions.h"
#include "TreeWriter.h"
#include "UsageError.h"

#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "sqlaccess/RepositoryConnection.h"
#include "view/View.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QTextStream>

void TQXTreeCommand::CheckRepositoryExists(const QString& repository) {
    const RepositoryLocation location = RepositoryLocation::Parse(repository);
    if (location.kind == RepositoryLocation::Kind::SQLite && !QFileInfo(location.filePath).isFile())
        throw EQXUsageError(QStringLiteral("repository not found: %1").arg(repository));
}

void TQXTreeCommand::SetTimeouts(const TQXTreeOptions& options) {
    if (options.TimeoutSeconds < 0)
        return;
    RepositoryTimeouts timeouts;
    timeouts.connectSeconds = options.TimeoutSeconds;
    timeouts.statementSeconds = options.TimeoutSeconds;
    RepositoryTimeouts::SetCurrent(timeouts);
}

QString TQXTreeCommand::Summary() const {
    return QStringLiteral("print the tree of a view: korvane-cli tree REPO [options]");
}

QString TQXTreeCommand::Help() const {
    return TQXTreeOptions::Help();
}

int TQXTreeCommand::Run(const QStringList& arguments, QTextStream& out, QTextStream& err) {
    const TQXTreeOptions options = TQXTreeOptions::Parse(arguments);
    if (options.HelpRequested) {
        out << Help();
        return ExitOk;
    }
    const std::unique_ptr<TQXTreeWriter> writer = TQXTreeWriter::Create(options.Format);
    if (!options.Repository.isEmpty())
        CheckRepositoryExists(options.Repository);
    SetTimeouts(options);

    TQXViewDriver driver(options.Repository);
    if (!driver.RepositoryNotice().isEmpty())
        err << "korvane-cli: note: " << driver.RepositoryNotice() << "\n";
    driver.AnswerYes(options.AnswerYes);
    driver.View().SetReadPath(options.Reference ? TQXReadPath::Reference : TQXReadPath::SetBased);
    if (options.OpenFile.isEmpty()) {
        driver.Apply(options.Settings);
        if (options.Filter.Given()) {
            driver.Connect(); // the filter dialog comes with the connection
            options.Filter.ApplyTo(driver.View());
        }
        if (options.Settings.Option && driver.View().cbOption->isHidden())
            err << "korvane-cli: warning: this view has no option box; --option is ignored\n";
        driver.Refresh();
    } else {
        for (QString note : driver.OpenDocument(options.OpenFile))
            err << "korvane-cli: note: " << note.replace(QLatin1Char('\n'), QLatin1Char(' '))
                << "\n";
    }
    Open(driver, options, err);
    SelectAndTrack(driver, options);
    writer->SetFilter(TQXFilterInForce::Of(driver.View()));
    writer->Write(driver.Tree(), out);
    if (!options.SaveFile.isEmpty())
        driver.SaveDocument(options.SaveFile);
    ReportQuestions(driver, options.AnswerYes, err);
    return ExitOk;
}

void TQXTreeCommand::Open(TQXViewDriver& driver, const TQXTreeOptions& options, QTextStream& err) {
    if (!driver.ExpandToDepth(options.Depth, options.MaxNodes))
        err << "korvane-cli: warning: stopped opening nodes at " << options.MaxNodes
            << " nodes (--max-nodes); the tree is incomplete\n";
    if (!options.Path.isEmpty() && !driver.ExpandPath(options.Path))
        throw EQXError(QStringLiteral("path not found: %1 (%2)")
                           .arg(options.PathText, MissingOnPath(driver, options.Path)));
}

void TQXTreeCommand::SelectAndTrack(TQXViewDriver& driver, const TQXTreeOptions& options) {
    auto nodesOn = [&driver](const QStringList& path) {
        const QList<TQXTreeNode*> nodes = driver.NodesOnPath(path);
        if (nodes.isEmpty())
            throw EQXError(QStringLiteral("path not found: %1 (%2)")
                               .arg(path.join(QLatin1Char('/')), MissingOnPath(driver, path)));
        return nodes;
    };
    const QList<TQXTreeNode*> before = driver.Tree().Selection();
    for (const QStringList& path : options.Tracks) {
        driver.Tree().SetSelection(nodesOn(path));
        const qsizetype shown = driver.Ui().Messages().size();
        driver.View().AddTrack1Click(nullptr);
        if (driver.Ui().Messages().size() > shown)
            throw EQXError(QStringLiteral("no track along %1: %2")
                               .arg(path.join(QLatin1Char('/')), driver.Ui().Messages().last()));
    }
    if (options.Selects.isEmpty()) {
        if (!options.Tracks.isEmpty())
            driver.Tree().SetSelection(before);
        return;
    }
    QList<TQXTreeNode*> selection;
    for (const QStringList& path : options.Selects)
        selection << nodesOn(path).constLast();
    driver.Tree().SetSelection(selection);
}

QString TQXTreeCommand::MissingOnPath(TQXViewDriver& driver, const QStringList& path) {
    QList<TQXTreeNode*> candidates;
    for (int i = 0; i < driver.Tree().RootCount(); ++i)
        candidates << driver.Tree().Root(i);
    QStringList found;
    for (const QString& text : path) {
        QList<TQXTreeNode*> next;
        bool matched = false;
        for (TQXTreeNode* node : candidates) {
            if (node->Text() != text)
                continue;
            matched = true;
            for (int c = 0; c < node->ChildCount(); ++c)
                next << node->Child(c);
        }
        if (!matched)
            return found.isEmpty() ? QStringLiteral("no root node '%1'").arg(text)
                                   : QStringLiteral("no node '%1' under '%2'")
                                         .arg(text, found.join(QLatin1Char('/')));
        found << text;
        candidates = next;
    }
    return QString();
}

void TQXTreeCommand::ReportQuestions(TQXViewDriver& driver, bool yes, QTextStream& err) {
    for (QString question : driver.Ui().Questions())
        err << "korvane-cli: the view asked: \""
            << question.replace(QLatin1Char('\r'), QLatin1Char(' ')) << "\" and was answered "
            << (yes ? "Yes" : "No") << "\n";
}
