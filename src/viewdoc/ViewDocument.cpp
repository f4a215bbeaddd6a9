#include "viewdoc/ViewDocument.h"

#include "repository/Errors.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <limits>

namespace {

// ---------------------------------------------------------------- writing

const QByteArray LineEnd("\n\r", 2);
const QByteArray SelectionLine("  Selection  ");
const QByteArray TrackListLine("  TrackList  ");

QByteArray Bool(bool value) {
    return value ? QByteArrayLiteral("-1") : QByteArrayLiteral("0");
}

// A text in the file's code page; a line break inside it would end the line
// early, so it is written as a blank.
QByteArray Text(QString text) {
    text.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\r'), QLatin1Char(' '));
    return text.toLatin1();
}

// ---------------------------------------------------------------- reading

EQXError LineError(qint64 line, const QString& what) {
    return EQXError(QStringLiteral("line ") + QString::number(line) + QStringLiteral(": ") + what);
}

// A shortened copy of a field for messages.
QString Quoted(const QByteArray& field) {
    QString text = QString::fromLatin1(field.left(40));
    if (field.size() > 40)
        text += QStringLiteral("...");
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

// A decimal integer with an optional sign that fits 32 bits.
bool ParseInt(const QByteArray& field, qint32& value) {
    qsizetype i = 0;
    bool negative = false;
    if (i < field.size() && (field[i] == '-' || field[i] == '+'))
        negative = field[i++] == '-';
    if (i == field.size())
        return false;
    qint64 magnitude = 0;
    for (; i < field.size(); ++i) {
        const char c = field[i];
        if (c < '0' || c > '9')
            return false;
        magnitude = magnitude * 10 + (c - '0');
        if (magnitude > qint64(std::numeric_limits<qint32>::max()) + 1)
            return false;
    }
    const qint64 signedValue = negative ? -magnitude : magnitude;
    if (signedValue > std::numeric_limits<qint32>::max())
        return false;
    value = static_cast<qint32>(signedValue);
    return true;
}

// "-1" and "0" as written; any other integer (non-zero is true) and the
// words true and false are read as well.
bool ParseBool(const QByteArray& field, bool& value) {
    qint32 number = 0;
    if (ParseInt(field, number)) {
        value = number != 0;
        return true;
    }
    const QByteArray lower = field.toLower();
    if (lower == "true" || lower == "false") {
        value = lower == "true";
        return true;
    }
    return false;
}

// Splits lines at LF or CR; the other one right after it belongs to the same
// line end, so LF CR, CR LF, LF and CR all end one line. Reads the device in
// chunks and refuses lines longer than MaxLineBytes.
class TLineReader {
public:
    explicit TLineReader(QIODevice& device) : FDevice(device) {}

    // The next line without its end; false at the end of the file.
    bool Next(QByteArray& line) {
        qsizetype scanned = 0; // bytes after FPos known to hold no line end
        for (;;) {
            const char* begin = FBuffer.constData() + FPos + scanned;
            const char* stop = FBuffer.constData() + FBuffer.size();
            const char* found =
                std::find_if(begin, stop, [](char c) { return c == '\n' || c == '\r'; });
            const qsizetype end = found == stop ? -1 : found - FBuffer.constData();
            scanned = (end >= 0 ? end : FBuffer.size()) - FPos;
            if (scanned > viewdoc::MaxLineBytes)
                throw LineError(FLine + 1, QStringLiteral("the line is longer than ") +
                                               QString::number(viewdoc::MaxLineBytes) +
                                               QStringLiteral(" bytes"));
            if (end >= 0) {
                ++FLine;
                line = FBuffer.mid(FPos, end - FPos);
                const char first = FBuffer[end];
                FPos = end + 1;
                if (FPos == FBuffer.size())
                    Fill();
                if (FPos < FBuffer.size()) {
                    const char second = FBuffer[FPos];
                    if ((second == '\n' || second == '\r') && second != first)
                        ++FPos;
                }
                return true;
            }
            if (!Fill()) {
                if (FPos >= FBuffer.size())
                    return false;
                ++FLine; // a last line without its end
                line = FBuffer.mid(FPos);
                FPos = FBuffer.size();
                return true;
            }
        }
    }

    // The number of the line Next returned last, counted from 1.
    qint64 LineNumber() const { return FLine; }

private:
    // Drops what was read and appends the next chunk; false at the end.
    bool Fill() {
        if (FEnd)
            return false;
        FBuffer.remove(0, FPos);
        FPos = 0;
        const qsizetype before = FBuffer.size();
        FBuffer.resize(before + ChunkBytes);
        const qint64 read = FDevice.read(FBuffer.data() + before, ChunkBytes);
        FBuffer.resize(before + std::max<qint64>(read, 0));
        if (read < 0)
            throw EQXError(QStringLiteral("could not read line ") + QString::number(FLine + 1) +
                           QStringLiteral(": ") + FDevice.errorString());
        if (read == 0)
            FEnd = true;
        return read > 0;
    }

    static constexpr qsizetype ChunkBytes = 1 << 16;
    QIODevice& FDevice;
    QByteArray FBuffer;
    qsizetype FPos = 0;
    qint64 FLine = 0;
    bool FEnd = false;
};

// Takes the fields of one line from the left.
class TFields {
public:
    explicit TFields(const QByteArray& line) : FLine(line) {}

    // The text up to the next comma, which is consumed; false when there is
    // no comma left.
    bool Take(QByteArray& field) {
        const qsizetype comma = FLine.indexOf(',', FPos);
        if (comma < 0)
            return false;
        field = FLine.mid(FPos, comma - FPos);
        FPos = comma + 1;
        return true;
    }
    QByteArray Rest() const { return FLine.mid(FPos); }
    bool RestStartsWith(const char* text) const { return FLine.indexOf(text, FPos) == FPos; }
    void Skip(qsizetype count) { FPos += count; }
    qsizetype Position() const { return FPos; }
    void Reset(qsizetype position) { FPos = position; }

private:
    const QByteArray& FLine;
    qsizetype FPos = 0;
};

class TDocumentReader {
public:
    explicit TDocumentReader(QIODevice& device) : FLines(device) {}

    TQXViewDocument Read() {
        TQXViewDocument document;
        document.DocumentName = Header("the document name");
        document.CreationText2 = Header("the second creation text");
        document.CreationText3 = Header("the third creation text");
        document.ConnectionName = Header("the connection name");
        document.Dependencies = HeaderBool("the view type (-1 Dependencies, 0 Distribution)");
        document.TopDown = HeaderBool("the track direction (-1 TopDown, 0 BottomUp)");
        document.ViewBy = Header("the view-by level");
        document.Option = HeaderBool("the option box (-1 checked, 0 not)");
        document.FilterOn = HeaderBool("the root-item filter (-1 On, 0 Off)");
        document.LimitText = Header("the root-item limit");
        const QByteArray countLine = NextLine(QStringLiteral("the number of filter rows"));
        qint32 count = 0;
        if (!ParseInt(countLine, count) || count < 0)
            throw LineError(FLines.LineNumber(),
                            QStringLiteral("the number of filter rows must be a whole number of "
                                           "at least 0, not ") +
                                Quoted(countLine));
        for (qint32 row = 0; row < count; ++row)
            document.FilterRows << FilterRow(row, count);
        document.CaseSensitive = HeaderBool("the case-sensitive box (-1 checked, 0 not)");
        ReadNodes(document);
        ReadSelectionAndTracks(document);
        return document;
    }

private:
    QByteArray NextLine(const QString& what) {
        QByteArray line;
        if (!FLines.Next(line))
            throw LineError(FLines.LineNumber() + 1,
                            QStringLiteral("the file ends before ") + what);
        return line;
    }

    QString Header(const char* what) { return QString::fromLatin1(NextLine(QLatin1String(what))); }

    bool HeaderBool(const char* what) {
        const QByteArray line = NextLine(QLatin1String(what));
        bool value = false;
        if (!ParseBool(line, value))
            throw LineError(FLines.LineNumber(), QLatin1String(what) +
                                                     QStringLiteral(" must be -1 or 0, not ") +
                                                     Quoted(line));
        return value;
    }

    qint32 Number(const QByteArray& field, const char* what) {
        qint32 value = 0;
        if (!ParseInt(field, value))
            throw LineError(FLines.LineNumber(),
                            QLatin1String(what) + QStringLiteral(" must be a whole number, not ") +
                                Quoted(field));
        return value;
    }

    // Joint, attribute and operator, each up to its comma; a field without a
    // following comma is left as it is, and what remains is the value.
    TQXDocumentFilterRow FilterRow(qint32 row, qint32 count) {
        const QByteArray line = NextLine(QStringLiteral("filter row ") + QString::number(row + 1) +
                                         QStringLiteral(" of ") + QString::number(count));
        TFields fields(line);
        TQXDocumentFilterRow result;
        QByteArray field;
        if (fields.Take(field) && !ParseBool(field, result.PreviousJoint))
            throw LineError(FLines.LineNumber(),
                            QStringLiteral("the filter row's joint must be -1 or 0, not ") +
                                Quoted(field));
        if (row == 0)
            result.PreviousJoint = false;
        if (fields.Take(field))
            result.Attribute = Number(field, "the filter row's attribute");
        if (fields.Take(field))
            result.Operator = Number(field, "the filter row's operator");
        if (result.Attribute < 0 || result.Operator < 0)
            throw LineError(FLines.LineNumber(),
                            QStringLiteral("the filter row's attribute and operator must not be "
                                           "negative"));
        result.Value = QString::fromLatin1(fields.Rest());
        return result;
    }

    void ReadNodes(TQXViewDocument& document) {
        QByteArray line;
        for (;;) {
            if (!FLines.Next(line))
                throw LineError(FLines.LineNumber() + 1,
                                QStringLiteral("the file ends before the selection marker '") +
                                    viewdoc::SelectionMarker + QLatin1Char('\''));
            if (line.isEmpty())
                break;
            if (line == SelectionLine)
                return;
            document.Nodes.push_back(Node(line, document.Nodes));
        }
        // The nodes ended at an empty line: the selection marker comes next.
        while (FLines.Next(line)) {
            if (line == SelectionLine)
                return;
            if (!line.isEmpty())
                throw LineError(FLines.LineNumber(),
                                QStringLiteral("expected the selection marker '") +
                                    viewdoc::SelectionMarker + QStringLiteral("', not ") +
                                    Quoted(line));
        }
        throw LineError(FLines.LineNumber() + 1,
                        QStringLiteral("the file ends before the selection marker '") +
                            viewdoc::SelectionMarker + QLatin1Char('\''));
    }

    TQXDocumentNode Node(const QByteArray& line, const std::vector<TQXDocumentNode>& before) {
        TFields fields(line);
        QByteArray expanded, image, level;
        if (!fields.Take(expanded) || !fields.Take(image) || !fields.Take(level))
            throw LineError(FLines.LineNumber(),
                            QStringLiteral("a node line needs the expanded flag, the image index "
                                           "and the level, each followed by a comma: ") +
                                Quoted(line));
        TQXDocumentNode node;
        if (!ParseBool(expanded, node.ParentExpanded))
            throw LineError(FLines.LineNumber(),
                            QStringLiteral("the node's expanded flag must be -1 or 0, not ") +
                                Quoted(expanded));
        node.ImageIndex = Number(image, "the node's image index");
        node.Level = Number(level, "the node's level");
        const int previous = before.empty() ? -1 : before.back().Level;
        if (node.Level < 0)
            throw LineError(FLines.LineNumber(), QStringLiteral("the node's level ") +
                                                     QString::number(node.Level) +
                                                     QStringLiteral(" is negative"));
        if (node.Level > previous + 1)
            throw LineError(
                FLines.LineNumber(),
                before.empty() ? QStringLiteral("the first node must have level 0, not ") +
                                     QString::number(node.Level)
                               : QStringLiteral("level ") + QString::number(node.Level) +
                                     QStringLiteral(" follows level ") + QString::number(previous) +
                                     QStringLiteral(": a node can only be one level below the "
                                                    "node before it"));

        if (fields.RestStartsWith(",,,,,,,,,")) {
            fields.Skip(9);
            node.Text = QString::fromLatin1(fields.Rest());
            return node;
        }
        const qsizetype payload = fields.Position();
        if (TakeNumbers(fields, node.Numbers)) {
            node.Kind = TQXDocumentNode::Payload::Item;
            node.Text = QString::fromLatin1(fields.Rest());
            return node;
        }
        fields.Reset(payload);
        QByteArray text1, text2;
        if (fields.Take(text1) && fields.Take(text2) && TakeNumbers(fields, node.Numbers)) {
            node.Kind = TQXDocumentNode::Payload::DataItem;
            node.DataText1 = QString::fromLatin1(text1);
            node.DataText2 = QString::fromLatin1(text2);
            node.Text = QString::fromLatin1(fields.Rest());
            return node;
        }
        throw LineError(FLines.LineNumber(),
                        QStringLiteral("the node's item is neither nine numbers nor two texts and "
                                       "nine numbers, each followed by a comma"));
    }

    static bool TakeNumbers(TFields& fields, std::array<qint32, 9>& numbers) {
        QByteArray field;
        for (qint32& number : numbers)
            if (!fields.Take(field) || !ParseInt(field, number))
                return false;
        return true;
    }

    // Selection lines up to the track list marker: every number followed by
    // a comma that names a node; anything else there is skipped. Then the
    // tracks, up to an empty line or the end of the file.
    void ReadSelectionAndTracks(TQXViewDocument& document) {
        std::vector<bool> selected(document.Nodes.size(), false);
        QByteArray line;
        bool tracks = false;
        while (FLines.Next(line)) {
            if (line == TrackListLine) {
                tracks = true;
                break;
            }
            const QList<QByteArray> parts = line.split(',');
            for (qsizetype i = 0; i + 1 < parts.size(); ++i) {
                qint32 index = -1;
                if (ParseInt(parts[i], index) && index >= 0 &&
                    index < static_cast<qint64>(selected.size()) && !selected[index]) {
                    selected[index] = true;
                    document.Selection << index;
                }
            }
        }
        if (!tracks)
            return;
        while (FLines.Next(line) && !line.isEmpty()) {
            const QString text = QString::fromLatin1(line);
            if (text.contains(QStringLiteral(" - ")))
                document.Tracks << TQXDocumentTrack{text, {}};
            else if (!document.Tracks.isEmpty())
                document.Tracks.last().Keys << text;
        }
    }

    TLineReader FLines;
};

} // namespace

namespace viewdoc {

QByteArray Write(const TQXViewDocument& document) {
    QByteArray out;
    out.reserve(64 + qsizetype(document.Nodes.size()) * 64);
    auto line = [&out](const QByteArray& text) { out += text + LineEnd; };
    line(Text(document.DocumentName));
    line(Text(document.CreationText2));
    line(Text(document.CreationText3));
    line(Text(document.ConnectionName));
    line(Bool(document.Dependencies));
    line(Bool(document.TopDown));
    line(Text(document.ViewBy));
    line(Bool(document.Option));
    line(Bool(document.FilterOn));
    line(Text(document.LimitText));
    line(QByteArray::number(document.FilterRows.size()));
    for (qsizetype row = 0; row < document.FilterRows.size(); ++row) {
        const TQXDocumentFilterRow& filter = document.FilterRows[row];
        line((row == 0 ? QByteArrayLiteral("0") : Bool(filter.PreviousJoint)) + ',' +
             QByteArray::number(filter.Attribute) + ',' + QByteArray::number(filter.Operator) +
             ',' + Text(filter.Value));
    }
    line(Bool(document.CaseSensitive));
    for (const TQXDocumentNode& node : document.Nodes) {
        out += Bool(node.ParentExpanded) + ',' + QByteArray::number(node.ImageIndex) + ',' +
               QByteArray::number(node.Level) + ',';
        switch (node.Kind) {
        case TQXDocumentNode::Payload::None:
            out += ",,,,,,,,,";
            break;
        case TQXDocumentNode::Payload::DataItem:
            out += Text(node.DataText1) + ',' + Text(node.DataText2) + ',';
            [[fallthrough]];
        case TQXDocumentNode::Payload::Item:
            for (qint32 number : node.Numbers)
                out += QByteArray::number(number) + ',';
            break;
        }
        out += Text(node.Text) + LineEnd;
    }
    line(SelectionLine);
    QByteArray selection;
    for (int index : document.Selection)
        selection += QByteArray::number(index) + ',';
    line(selection);
    line(TrackListLine);
    for (const TQXDocumentTrack& track : document.Tracks) {
        line(Text(track.Name));
        for (const QString& key : track.Keys)
            line(Text(key));
    }
    return out;
}

void Save(const TQXViewDocument& document, const QString& path) {
    const QByteArray bytes = Write(document);
    QSaveFile file(path);
    auto fail = [&path](const QString& cause) {
        return EQXError(QStringLiteral("Could not save the view document ") + path +
                        QStringLiteral(": ") + cause +
                        QStringLiteral(" (an existing file was left as it was)"));
    };
    if (QFileInfo(path).isDir())
        throw fail(QStringLiteral("it is a folder"));
    if (!file.open(QIODevice::WriteOnly))
        throw fail(file.errorString());
    // A full disk may take part of a write without an error: the size on
    // disk is what counts.
    if (file.write(bytes) != bytes.size() || !file.flush() || file.size() != bytes.size()) {
        QString cause = QStringLiteral("its ") + QString::number(bytes.size()) +
                        QStringLiteral(" bytes could not all be written (is the disk full?)");
        if (file.error() != QFileDevice::NoError &&
            file.errorString() != QLatin1String("Unknown error"))
            cause += QStringLiteral(": ") + file.errorString();
        file.cancelWriting();
        throw fail(cause);
    }
    if (!file.commit())
        throw fail(file.errorString());
}

TQXViewDocument Read(QIODevice& device) {
    return TDocumentReader(device).Read();
}

TQXViewDocument Read(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return Read(buffer);
}

TQXViewDocument Load(const QString& path) {
    if (QFileInfo(path).isDir())
        throw EQXError(QStringLiteral("Could not open the view document ") + path +
                       QStringLiteral(": it is a folder"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw EQXError(QStringLiteral("Could not open the view document ") + path +
                       QStringLiteral(": ") + file.errorString());
    return Read(file);
}

} // namespace viewdoc
