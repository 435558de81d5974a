#include "wizards/frame_model.h"

#include "core/workspace.h"

#include <QObject>

namespace pw
{

void FrameSpec::clearValues()
{
    Name.clear();
    Source.clear();
    MarginWidth.clear();
    MarginHeight.clear();
    Extra.clear();
    Scrolling = 0;
    NoResize = 0;
}

void FrameModel::reset()
{
    if (m_frames.isEmpty())
        m_frames.append(FrameSpec());
    m_frames.resize(1);
    FrameSpec &first = m_frames.first();
    first.Deleted = 0;
    first.Top = 0;
    first.Left = 0;
    first.Bottom = BoxHeight;
    first.Right = BoxWidth;
    CurrentFrame = 0;
    LastX = LastY = LineLow = LineHigh = 0;
    ScaleX = 640.0f / BoxWidth;
    ScaleY = 480.0f / BoxHeight;
}

void FrameModel::load(const QList<FrameSpec> &frames)
{
    if (frames.isEmpty())
        return;
    m_frames = frames;
    CurrentFrame = 0;
}

bool FrameModel::anyBeyondFirst() const
{
    for (int i = 1; i < m_frames.size(); ++i)
        if (!m_frames[i].isDeleted())
            return true;
    return false;
}

int FrameModel::liveCount() const
{
    int n = 0;
    for (const FrameSpec &f : m_frames)
        n += f.isDeleted() ? 0 : 1;
    return n;
}

int FrameModel::FrameHit(int x, int y) const
{
    for (int i = 0; i < m_frames.size(); ++i) {
        const FrameSpec &f = m_frames[i];
        if (!f.isDeleted() && f.Left <= x && x <= f.Right && f.Top <= y && y <= f.Bottom)
            return i + 1;
    }
    return 0;
}

// How far the line of frame i runs on through frames with the same edge on the same side. The
// pass is repeated once per record so that a chain in any order is followed; a pass that finds
// nothing new ends it early, with the same result.
LineFound FrameModel::extend(int i, LineKind kind, int pos, LineFound line) const
{
    const FrameSpec &own = m_frames[i];
    const bool horizontal = kind == LineKind::Horizontal;
    for (int pass = 0; pass < m_frames.size(); ++pass) {
        bool grew = false;
        for (int j = 0; j < m_frames.size(); ++j) {
            const FrameSpec &f = m_frames[j];
            if (j == i || f.isDeleted())
                continue;
            const bool sameEdge =
                horizontal ? (f.Top == pos && own.Top == pos) || (f.Bottom == pos && own.Bottom == pos)
                           : (f.Left == pos && own.Left == pos) || (f.Right == pos && own.Right == pos);
            if (!sameEdge)
                continue;
            const qint16 nearEdge = horizontal ? f.Left : f.Top;
            const qint16 farEdge = horizontal ? f.Right : f.Bottom;
            if (farEdge == line.low && nearEdge != line.low) {
                line.low = nearEdge;
                grew = true;
            }
            if (nearEdge == line.high && farEdge != line.high) {
                line.high = farEdge;
                grew = true;
            }
        }
        if (!grew)
            break;
    }
    return line;
}

LineFound FrameModel::findLine(int x, int y) const
{
    for (int i = 0; i < m_frames.size(); ++i) {
        const FrameSpec &f = m_frames[i];
        if (f.isDeleted())
            continue;
        // The outer top and left edges are no lines.
        if (y != 0 && (y == f.Top || y == f.Bottom) && f.Left <= x && x <= f.Right)
            return extend(i, LineKind::Horizontal, y, {LineKind::Horizontal, f.Left, f.Right});
        if (x != 0 && (x == f.Left || x == f.Right) && f.Top <= y && y <= f.Bottom)
            return extend(i, LineKind::Vertical, x, {LineKind::Vertical, f.Top, f.Bottom});
    }
    return {};
}

int FrameModel::LineHit(int x, int y)
{
    const LineFound line = findLine(x, y);
    if (line.kind != LineKind::None) {
        LineLow = line.low;
        LineHigh = line.high;
    }
    return int(line.kind);
}

bool FrameModel::splitH()
{
    return split(&FrameSpec::Top, &FrameSpec::Bottom, LastY);
}

bool FrameModel::splitV()
{
    return split(&FrameSpec::Left, &FrameSpec::Right, LastX);
}

// The current frame keeps the part before `at`; a new record, its bounds alone, takes the rest.
bool FrameModel::split(qint16 FrameSpec::*low, qint16 FrameSpec::*high, int at)
{
    if (CurrentFrame < 1 || CurrentFrame > count())
        return false;
    const FrameSpec current = frame(CurrentFrame);
    if (current.isDeleted() || at <= current.*low || at >= current.*high)
        return false;
    FrameSpec added;
    added.Top = current.Top;
    added.Left = current.Left;
    added.Bottom = current.Bottom;
    added.Right = current.Right;
    added.*low = qint16(at);
    frame(CurrentFrame).*high = qint16(at);
    m_frames.append(added);
    return true;
}

FrameModel::DeleteResult FrameModel::deleteCurrent()
{
    if (CurrentFrame == 1)
        return DeleteResult::FirstFrame;
    if (CurrentFrame < 1 || CurrentFrame > count() || frame(CurrentFrame).isDeleted())
        return DeleteResult::NoNeighbour;
    FrameSpec &c = frame(CurrentFrame);
    for (int j = 1; j <= count(); ++j) {
        FrameSpec &f = frame(j);
        if (j == CurrentFrame || f.isDeleted())
            continue;
        bool taken = false;
        if (c.Left == f.Left && c.Right == f.Right) {
            if (c.Top == f.Bottom) {
                f.Bottom = c.Bottom;
                taken = true;
            } else if (c.Bottom == f.Top) {
                f.Top = c.Top;
                taken = true;
            }
        }
        if (!taken && c.Top == f.Top && c.Bottom == f.Bottom) {
            if (c.Left == f.Right) {
                f.Right = c.Right;
                taken = true;
            } else if (c.Right == f.Left) {
                f.Left = c.Left;
                taken = true;
            }
        }
        if (taken) {
            c.Deleted = -1;
            CurrentFrame = qint16(j);
            return DeleteResult::Deleted;
        }
    }
    return DeleteResult::NoNeighbour;
}

bool FrameModel::dragStep(LineKind kind, int pos)
{
    const bool horizontal = kind == LineKind::Horizontal;
    const qint16 held = horizontal ? LastY : LastX;
    const qint16 to = qint16(qBound(0, pos, int(horizontal ? BoxHeight : BoxWidth)));
    const QList<FrameSpec> before = m_frames;
    for (FrameSpec &f : m_frames) {
        if (f.isDeleted())
            continue;
        if (horizontal ? (f.Left < LineLow || f.Right > LineHigh) : (f.Top < LineLow || f.Bottom > LineHigh))
            continue;
        qint16 &nearEdge = horizontal ? f.Top : f.Left;
        qint16 &farEdge = horizontal ? f.Bottom : f.Right;
        bool refused = false;
        if (nearEdge == held) {
            nearEdge = to;
            refused = nearEdge >= farEdge;
        }
        if (!refused && farEdge == held) {
            farEdge = to;
            refused = farEdge <= nearEdge;
        }
        if (refused) {
            // The frames already moved go back too, so the line stays whole.
            m_frames = before;
            return false;
        }
    }
    return true;
}

namespace
{

// Lives as a child of the workspace, so it ends with the program's run.
class RunFrames : public QObject
{
public:
    explicit RunFrames(QObject *parent) : QObject(parent) { setObjectName(QStringLiteral("RunFrames")); }
    FrameModel model;
};

} // namespace

FrameModel &RunFrameModel(Workspace &workspace)
{
    for (QObject *child : workspace.children())
        if (auto *frames = dynamic_cast<RunFrames *>(child))
            return frames->model;
    return (new RunFrames(&workspace))->model;
}

} // namespace pw
