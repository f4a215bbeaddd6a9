#include "host/DiagramLayout.h"

#include "host/Items.h"

#include <algorithm>
#include <functional>

namespace {

const QString NoParent = QStringLiteral("        No Parent        ");

} // namespace

qreal TQXDiagramLayout::BoxWidth(const QString& text) {
    // An average character of the 12-pixel drawing font is about 8 units wide.
    return std::clamp<qreal>(40 + 8 * text.size(), 80, 360);
}

void TQXDiagramLayout::AddTrack(const TQXItems& items, const QString& caption) {
    const int count = items.Count();
    if (count == 0)
        return;
    // Parents: the nearest entry before, one level up, unless there is none.
    QList<int> parent(count, -1);
    QList<QList<int>> children(count);
    QList<int> roots;
    int topLevel = items.At(0).Level;
    for (int i = 0; i < count; ++i) {
        const TQXItems::Entry& entry = items.At(i);
        topLevel = std::min(topLevel, entry.Level);
        if (entry.ParentText != NoParent || entry.ParentFileID != -1) {
            for (int j = i - 1; j >= 0; --j) {
                if (items.At(j).Level == entry.Level - 1) {
                    parent[i] = j;
                    break;
                }
                if (items.At(j).Level < entry.Level - 1)
                    break;
            }
        }
        if (parent[i] >= 0)
            children[parent[i]] << i;
        else
            roots << i;
    }

    // Subtree widths, then boxes centred over their children.
    QList<qreal> width(count, 0);
    std::function<qreal(int)> measure = [&](int i) {
        qreal span = 0;
        for (int child : children[i])
            span += measure(child) + (span > 0 ? SiblingGap : 0);
        width[i] = std::max(BoxWidth(items.At(i).Text), span);
        return width[i];
    };
    const qreal left = FTracks.isEmpty() ? 0 : FTracks.last().Frame.right() + TrackGap;
    const qreal top = CaptionHeight;
    const int first = static_cast<int>(FNodes.size());
    for (int i = 0; i < count; ++i)
        FNodes << Node{items.At(i).Text, items.At(i).Icon, QRectF()};
    std::function<void(int, qreal)> place = [&](int i, qreal x) {
        const qreal own = BoxWidth(items.At(i).Text);
        const qreal layer = items.At(i).Level - topLevel;
        FNodes[first + i].Box =
            QRectF(x + (width[i] - own) / 2, top + layer * (BoxHeight + LayerGap), own, BoxHeight);
        qreal span = -SiblingGap;
        for (int child : children[i])
            span += width[child] + SiblingGap;
        qreal childX = x + (width[i] - std::max<qreal>(span, 0)) / 2;
        for (int child : children[i]) {
            place(child, childX);
            childX += width[child] + SiblingGap;
        }
        // Over the middle between the first and the last child.
        if (!children[i].isEmpty()) {
            QRectF& box = FNodes[first + i].Box;
            box.moveCenter(QPointF((FNodes[first + children[i].constFirst()].Box.center().x() +
                                    FNodes[first + children[i].constLast()].Box.center().x()) /
                                       2,
                                   box.center().y()));
        }
    };
    qreal x = left;
    QRectF frame;
    for (int root : roots) {
        measure(root);
        place(root, x);
        x += width[root] + SiblingGap;
    }
    for (int i = 0; i < count; ++i) {
        frame = frame.isNull() ? FNodes[first + i].Box : frame.united(FNodes[first + i].Box);
        if (parent[i] >= 0)
            FEdges << Edge{first + parent[i], first + i};
    }
    FTracks << Track{caption, frame};
}

void TQXDiagramLayout::Clear() {
    FNodes.clear();
    FEdges.clear();
    FTracks.clear();
}

QRectF TQXDiagramLayout::Bounds() const {
    QRectF bounds(0, 0, 1, 1);
    for (const Track& track : FTracks)
        bounds = bounds.united(track.Frame.adjusted(0, -CaptionHeight, 0, 0));
    return bounds.adjusted(-16, -16, 16, 16);
}
