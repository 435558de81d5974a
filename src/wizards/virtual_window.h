#pragma once

#include "wizards/frame_model.h"

#include <QWidget>

namespace pw
{

// pbVirtualWindow: the box that stands for the browser window, 5050 x 2970 twips at 15 twips a
// pixel. It draws only in paintEvent, from the model and the line held; mouse events go out in
// twips. A resting pointer within a few pixels of a line is snapped onto it, so that a line one
// pixel wide can be taken; the model's hit tests stay exact.
class VirtualWindow : public QWidget
{
    Q_OBJECT

public:
    static constexpr int TwipsPerPixel = 15;
    static constexpr int GrabPixels = 2;

    VirtualWindow(const FrameModel &model, QWidget *parent);

    // The mouse pointer of the designer: 0 the arrow, 7 a horizontal line held, 9 a vertical one.
    int pointer() const { return m_pointer; }
    void setPointer(int pointer);
    // The line drawn in yellow while held, none after ResizeVirtualWindow.
    void setHeldLine(LineKind kind, int pos, int low, int high);
    void clearHeldLine() { setHeldLine(LineKind::None, 0, 0, 0); }

    // The point of a pixel in twips, snapped onto a line nearby when no button is down.
    QPoint twipsAt(QPointF pixel, bool snap) const;

    QSize sizeHint() const override;

Q_SIGNALS:
    void mouseMoved(Qt::MouseButtons buttons, int x, int y);
    void mousePressed(Qt::MouseButton button, int x, int y, QPoint global);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    const FrameModel &m_model;
    int m_pointer = 0;
    LineFound m_held;
    int m_heldPos = 0;
};

} // namespace pw
