#include "wizards/virtual_window.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace pw
{

namespace
{

// The 16-colour palette's entries the designer uses.
const QColor Black(0, 0, 0);
const QColor LightGrey(0xC0, 0xC0, 0xC0); // 7
const QColor DarkGrey(0x80, 0x80, 0x80);  // 8
const QColor Yellow(0xFF, 0xFF, 0x00);    // 14
const QColor White(0xFF, 0xFF, 0xFF);     // 15

int px(int twips)
{
    return int(std::lround(double(twips) / VirtualWindow::TwipsPerPixel));
}

// A ridge: white just before the place, black just behind it.
void drawRidge(QPainter &p, bool horizontal, int at, int from, int to)
{
    const int before = px(at - 10);
    const int behind = px(at + 10);
    p.setPen(White);
    if (horizontal)
        p.drawLine(px(from), before, px(to), before);
    else
        p.drawLine(before, px(from), before, px(to));
    p.setPen(Black);
    if (horizontal)
        p.drawLine(px(from), behind, px(to), behind);
    else
        p.drawLine(behind, px(from), behind, px(to));
}

} // namespace

VirtualWindow::VirtualWindow(const FrameModel &model, QWidget *parent) : QWidget(parent), m_model(model)
{
    setObjectName(QStringLiteral("pbVirtualWindow"));
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFixedSize(sizeHint());
}

QSize VirtualWindow::sizeHint() const
{
    return {(FrameModel::BoxWidth + TwipsPerPixel - 1) / TwipsPerPixel,
            (FrameModel::BoxHeight + TwipsPerPixel - 1) / TwipsPerPixel};
}

void VirtualWindow::setPointer(int pointer)
{
    m_pointer = pointer;
    if (pointer == 7)
        setCursor(Qt::SizeVerCursor);
    else if (pointer == 9)
        setCursor(Qt::SizeHorCursor);
    else
        unsetCursor();
}

void VirtualWindow::setHeldLine(LineKind kind, int pos, int low, int high)
{
    m_held = {kind, qint16(low), qint16(high)};
    m_heldPos = pos;
    update();
}

QPoint VirtualWindow::twipsAt(QPointF pixel, bool snap) const
{
    const int x = qBound(0, int(std::lround(pixel.x())) * TwipsPerPixel, int(FrameModel::BoxWidth));
    const int y = qBound(0, int(std::lround(pixel.y())) * TwipsPerPixel, int(FrameModel::BoxHeight));
    if (!snap || m_model.findLine(x, y).kind != LineKind::None)
        return {x, y};
    // The nearest inner line within reach, tried outward from the pointer; never the box's edges.
    for (int step = 1; step <= GrabPixels; ++step) {
        for (const int d : {-step, step}) {
            const int sx = x + d * TwipsPerPixel;
            const int sy = y + d * TwipsPerPixel;
            if (sx > 0 && sx < FrameModel::BoxWidth && m_model.findLine(sx, y).kind == LineKind::Vertical)
                return {sx, y};
            if (sy > 0 && sy < FrameModel::BoxHeight && m_model.findLine(x, sy).kind == LineKind::Horizontal)
                return {x, sy};
        }
    }
    return {x, y};
}

void VirtualWindow::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.fillRect(rect(), LightGrey);
    const int count = m_model.count();
    for (int i = 2; i <= count; ++i) {
        const FrameSpec &a = m_model.frame(i);
        if (a.isDeleted())
            continue;
        for (int j = 1; j <= count; ++j) {
            const FrameSpec &b = m_model.frame(j);
            if (j == i || b.isDeleted())
                continue;
            if (b.Bottom == a.Top)
                drawRidge(p, true, a.Top, b.Left, b.Right);
            if (b.Right == a.Left)
                drawRidge(p, false, a.Left, b.Top, b.Bottom);
        }
    }
    if (count > 1 && m_model.CurrentFrame >= 1 && m_model.CurrentFrame <= count &&
        !m_model.frame(m_model.CurrentFrame).isDeleted()) {
        const FrameSpec &f = m_model.frame(m_model.CurrentFrame);
        p.setPen(QPen(DarkGrey, 1));
        p.setBrush(Qt::NoBrush);
        p.drawRect(QRect(QPoint(px(f.Left) + 1, px(f.Top) + 1), QPoint(px(f.Right) - 2, px(f.Bottom) - 2)));
    }
    if (m_held.kind != LineKind::None) {
        p.setPen(QPen(Yellow, 2));
        if (m_held.kind == LineKind::Horizontal)
            p.drawLine(px(m_held.low), px(m_heldPos), px(m_held.high), px(m_heldPos));
        else
            p.drawLine(px(m_heldPos), px(m_held.low), px(m_heldPos), px(m_held.high));
    }
}

void VirtualWindow::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint at = twipsAt(event->position(), event->buttons() == Qt::NoButton);
    Q_EMIT mouseMoved(event->buttons(), at.x(), at.y());
}

void VirtualWindow::mousePressEvent(QMouseEvent *event)
{
    const QPoint at = twipsAt(event->position(), false);
    Q_EMIT mousePressed(event->button(), at.x(), at.y(), event->globalPosition().toPoint());
}

} // namespace pw
