// View documents: open and save of a document of N nodes (default 100,000)
// through the view, median of --runs, and the peak memory of one open in a
// process of its own.
#include "BenchStats.h"

#include "driver/ViewDriver.h"
#include "platform/TreeControl.h"
#include "view/View.h"
#include "viewdoc/ViewDocument.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

namespace {

// The process's peak resident memory (VmHWM; unlike getrusage's maxrss it
// starts afresh in a new program).
double PeakMegabytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024.0;
    return 0;
}

// Roots with children and grandchildren, every other parent open, a
// selection and a track: what a large, well-explored view holds.
TQXViewDocument Document(int nodes) {
    TQXViewDocument document;
    document.DocumentName = QStringLiteral("Bench");
    document.ConnectionName = QStringLiteral("bench");
    document.Dependencies = true;
    document.ViewBy = QStringLiteral("Object");
    using P = TQXDocumentNode::Payload;
    for (int i = 0; document.Nodes.size() < std::size_t(nodes); ++i) {
        const int level = i % 10 == 0 ? 0 : i % 10 < 4 ? 1 : 2;
        const bool open = (i / 10) % 2 == 0;
        document.Nodes.push_back({level == 0 || open,
                                  52,
                                  level,
                                  P::Item,
                                  {i % 400 + 1, 0, 0, 0, 0, i + 1, 0, 0, 0},
                                  {},
                                  {},
                                  QStringLiteral("PROGRAM%1 [COBOL Program]").arg(i)});
    }
    document.Selection = {1, 2, 3};
    document.Tracks = {
        {QStringLiteral("PROGRAM0 - PROGRAM2"),
         {QStringLiteral("0:1,0,0,0,0,1,0,0,0"), QStringLiteral("1:2,0,0,0,0,2,0,0,0")}}};
    return document;
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.value(1) == QLatin1String("--open-once")) {
        const double before = PeakMegabytes();
        TQXViewDriver driver{QString()};
        driver.OpenDocument(args.value(2));
        Out() << before << " " << PeakMegabytes() << " " << driver.Tree().NodeCount() << "\n";
        return 0;
    }
    int runs = 5;
    int nodes = 100000;
    for (int i = 1; i + 1 < args.size(); i += 2) {
        if (args[i] == QLatin1String("--runs"))
            runs = args[i + 1].toInt();
        else if (args[i] == QLatin1String("--nodes"))
            nodes = args[i + 1].toInt();
    }
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("bench.kvv"));
    viewdoc::Save(Document(nodes), file);
    const QString saved = dir.filePath(QStringLiteral("saved.kvv"));

    TQXViewDriver driver{QString()};
    const BenchSamples open = Measure(runs, [&] { driver.OpenDocument(file); });
    const BenchSamples save = Measure(runs, [&] { driver.SaveDocument(saved); });

    QProcess child;
    child.start(QApplication::applicationFilePath(), {QStringLiteral("--open-once"), file});
    child.waitForFinished(-1);
    const QStringList peak = QString::fromLatin1(child.readAllStandardOutput()).split(' ');

    Out() << "| nodes | file MB | open median ms | p95 ms | save median ms | p95 ms | peak MB "
             "(before open) |\n|---|---|---|---|---|---|---|\n";
    Out() << "| " << driver.Tree().NodeCount() << " | "
          << QString::number(double(QFileInfo(file).size()) / 1e6, 'f', 1) << " | "
          << QString::number(open.Median(), 'f', 0) << " | " << QString::number(open.P95(), 'f', 0)
          << " | " << QString::number(save.Median(), 'f', 0) << " | "
          << QString::number(save.P95(), 'f', 0) << " | "
          << QString::number(peak.value(1).toDouble(), 'f', 0) << " ("
          << QString::number(peak.value(0).toDouble(), 'f', 0) << ") |\n";
    Out().flush();
    return 0;
}
