#pragma once

#include <QList>
#include <QRectF>
#include <QString>

class TQXItems;

// The drawing of the host's diagram window: each track handed over becomes
// a graph of its nodes (icon and text in a box) with an edge from every
// parent to its child, laid out top-down in layers by tree level; tracks
// stand side by side, left to right in the order they came. Free of
// widgets: it places boxes, the window paints them.
class TQXDiagramLayout {
public:
    struct Node {
        QString Text;
        int Icon = -1;
        QRectF Box;
    };
    struct Edge {
        int From = 0; // index into Nodes(): the parent
        int To = 0;   // the child
    };
    struct Track {
        QString Caption; // the command text the view sent
        QRectF Frame;    // around the track's boxes
    };

    static constexpr qreal BoxHeight = 28;
    static constexpr qreal LayerGap = 36;
    static constexpr qreal SiblingGap = 16;
    static constexpr qreal TrackGap = 56;
    static constexpr qreal CaptionHeight = 24;

    // Adds a hand-over: entries in display order, each with its level and,
    // unless its parent text is the "No Parent" text, a selected parent: the
    // nearest entry before it one level up.
    void AddTrack(const TQXItems& items, const QString& caption);
    void Clear();

    const QList<Node>& Nodes() const { return FNodes; }
    const QList<Edge>& Edges() const { return FEdges; }
    const QList<Track>& Tracks() const { return FTracks; }
    // Everything drawn, with a margin.
    QRectF Bounds() const;

    // The width of a box for a text: an icon, the text, padding.
    static qreal BoxWidth(const QString& text);

private:
    QList<Node> FNodes;
    QList<Edge> FEdges;
    QList<Track> FTracks;
};
