#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <vector>

class QIODevice;

// One row of the root-item filter as a view document keeps it.
struct TQXDocumentFilterRow {
    // The and/or choice of the row before, as written in the first field
    // ("0" for the first row).
    bool PreviousJoint = false;
    // Index of the chosen attribute; 10 stands for "Files Name".
    int Attribute = 0;
    // Index of the chosen operator.
    int Operator = 0;
    // The value box's text; it may contain commas.
    QString Value;

    // The joint that AddFilterRow takes for row `row` (counted from 0):
    // -1 for the first row, 1 when the previous joint is set, 2 otherwise.
    int AddFilterRowJoint(int row) const { return row == 0 ? -1 : PreviousJoint ? 1 : 2; }

    bool operator==(const TQXDocumentFilterRow&) const = default;
};

// One node line: where the node hangs, its picture, its payload and text.
struct TQXDocumentNode {
    enum class Payload { None, Item, DataItem };

    bool ParentExpanded = true; // a root node, or its parent is expanded
    int ImageIndex = -1;
    int Level = 0;
    Payload Kind = Payload::None;
    // Item: the nine identifiers in the constructor's order (file, system,
    // computer, application, package, object, entry, row, word). Data item:
    // its nine numbers in the constructor's order.
    std::array<qint32, 9> Numbers{};
    QString DataText1; // data items only
    QString DataText2;
    QString Text;

    bool operator==(const TQXDocumentNode&) const = default;
};

struct TQXDocumentTrack {
    QString Name; // always contains " - "
    QStringList Keys;

    bool operator==(const TQXDocumentTrack&) const = default;
};

// Everything a view document holds, in file order. Reading and writing are
// exact inverses for every document that Write produces.
struct TQXViewDocument {
    QString DocumentName;
    QString CreationText2;
    QString CreationText3;
    QString ConnectionName;
    bool Dependencies = false;
    bool TopDown = true;
    QString ViewBy = QStringLiteral("System");
    bool Option = false;
    bool FilterOn = false;
    QString LimitText = QStringLiteral("100");
    QList<TQXDocumentFilterRow> FilterRows;
    bool CaseSensitive = false;
    std::vector<TQXDocumentNode> Nodes;
    // Absolute indexes (positions in Nodes) in selection order.
    QList<int> Selection;
    QList<TQXDocumentTrack> Tracks;

    bool operator==(const TQXViewDocument&) const = default;
};

// The file format: 8-bit text (Latin-1; characters outside it are written
// as '?'), every line ended by LF CR. The reader also takes CR LF, LF and CR.
namespace viewdoc {

inline const QString FileFilter = QStringLiteral("Korvane View files (*.kvv)|*.kvv");
inline const QString SelectionMarker = QStringLiteral("  Selection  ");
inline const QString TrackListMarker = QStringLiteral("  TrackList  ");
// A line longer than this is refused: no node text comes near it.
constexpr qsizetype MaxLineBytes = 1 << 20;

// The document as the bytes of a file.
QByteArray Write(const TQXViewDocument& document);
// Writes through a temporary file beside `path`, renamed over it only once
// everything is written and flushed; on failure the previous file stays as
// it was. Throws EQXError naming the file and the cause.
void Save(const TQXViewDocument& document, const QString& path);

// Reads a document; throws EQXError "line N: what was wrong" for anything
// that is not one.
TQXViewDocument Read(QIODevice& device);
TQXViewDocument Read(const QByteArray& bytes);
// Reads the file; throws EQXError when it cannot be opened or read.
TQXViewDocument Load(const QString& path);

} // namespace viewdoc
