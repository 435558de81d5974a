#pragma once

#include <QList>
#include <QString>

namespace pw
{

class Workspace;

// One frame of the design: a rectangle in twips of the virtual window and the attributes of its
// FRAME tag. A deleted record stays in the list and takes part in nothing.
struct FrameSpec {
    qint16 Deleted = 0; // -1 when merged away
    qint16 Top = 0;
    qint16 Left = 0;
    qint16 Bottom = 0;
    qint16 Right = 0;
    QString Name;         // up to 30 characters
    QString Source;       // up to 256
    QString MarginWidth;  // up to 3
    QString MarginHeight; // up to 3
    qint16 Scrolling = 0; // 0 Auto, 1 Yes, 2 No
    qint16 NoResize = 0;  // -1 on
    QString Extra;        // up to 256, as typed

    bool isDeleted() const { return Deleted != 0; }
    void clearValues();
};

enum class LineKind { None = 0, Horizontal = 1, Vertical = 2 };

// A line between frames at a point, and how far it runs: left to right of a horizontal line, top
// to bottom of a vertical one.
struct LineFound {
    LineKind kind = LineKind::None;
    qint16 low = 0;
    qint16 high = 0;
};

// The drawn design: a flat list of rectangles that tile the box, with no tree. Hit tests compare
// exactly, since every edge that can be hit was itself a mouse position.
class FrameModel
{
public:
    static constexpr qint16 BoxWidth = 5050;
    static constexpr qint16 BoxHeight = 2970;

    FrameModel() { reset(); }

    // A dialog's start: the records cut to the first, which covers the box again and keeps its
    // attributes; the scales for the whole 640 x 480 screen.
    void reset();

    // A design read from elsewhere: these records in place of all, tiling the box.
    void load(const QList<FrameSpec> &frames);

    int count() const { return int(m_frames.size()); }          // records, deleted ones included
    FrameSpec &frame(int index) { return m_frames[index - 1]; } // from 1
    const FrameSpec &frame(int index) const { return m_frames[index - 1]; }
    // Whether a record beyond the first still stands (the edit tab is enabled then).
    bool anyBeyondFirst() const;
    int liveCount() const;

    // The first standing frame holding the point, edges included; 0 for none.
    int FrameHit(int x, int y) const;
    // The line through the point and its whole extent, without touching the state.
    LineFound findLine(int x, int y) const;
    // findLine, keeping the extent in LineLow and LineHigh; 0 none, 1 horizontal, 2 vertical.
    int LineHit(int x, int y);

    // Cut CurrentFrame at LastY (a horizontal line) or at LastX; the new record comes last with
    // no attributes. False when there is no current frame or the cut falls on its own edge.
    bool splitH();
    bool splitV();

    enum class DeleteResult { Deleted, FirstFrame, NoNeighbour };
    // Merges CurrentFrame into the first standing frame, in index order, that can take its whole
    // area; that frame becomes current.
    DeleteResult deleteCurrent();

    // One step of a drag of the line held at LastY (horizontal) or LastX, over LineLow..LineHigh,
    // to pos. A step that would turn a frame inside out is refused whole: every edge stays where
    // it was, and false tells that the drag ends. LastX and LastY are left to the caller.
    bool dragStep(LineKind kind, int pos);

    qint16 CurrentFrame = 0;
    qint16 LastX = 0;
    qint16 LastY = 0;
    qint16 LineLow = 0;
    qint16 LineHigh = 0;
    float ScaleX = 0; // pixels of the target screen per twip of the box
    float ScaleY = 0;

private:
    bool split(qint16 FrameSpec::*low, qint16 FrameSpec::*high, int at);
    LineFound extend(int i, LineKind kind, int pos, LineFound line) const;

    QList<FrameSpec> m_frames;
};

// The design of this run of the program: it outlives each dialog, so frame 1's attributes come
// back at the next use.
FrameModel &RunFrameModel(Workspace &workspace);

} // namespace pw
