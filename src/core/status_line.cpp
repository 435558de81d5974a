#include "core/status_line.h"

#include "core/app_state.h"

#include <QDialog>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace pw {

void CenterForm(QWidget *form)
{
    const QScreen *screen = form->screen() ? form->screen() : QGuiApplication::primaryScreen();
    const QRect area = screen->availableGeometry();
    const QSize size = form->frameSize().isValid() ? form->frameSize() : form->size();
    form->move(area.left() + (area.width() - size.width()) / 2,
               area.top() + int((area.height() - size.height()) * 0.8 / 2));
}

void ShowCentred(QDialog &dialog)
{
    dialog.adjustSize();
    CenterForm(&dialog);
    dialog.open();
}

void CenterOver(QWidget *window, const QWidget *over)
{
    if (!over) {
        CenterForm(window);
        return;
    }
    const QRect frame = over->frameGeometry();
    QRect placed(QPoint(0, 0), window->size());
    placed.moveCenter(frame.center());
    if (const QScreen *screen = over->screen()) {
        const QRect area = screen->availableGeometry();
        placed.moveLeft(qBound(area.left(), placed.left(), qMax(area.left(), area.right() - placed.width())));
        placed.moveTop(qBound(area.top(), placed.top(), qMax(area.top(), area.bottom() - placed.height())));
    }
    window->move(placed.topLeft());
}

QString SizeText(int length)
{
    return QStringLiteral("Size: ") + FormatNumberPicture(length);
}

QString LineText(int line)
{
    return QStringLiteral("Line: ") + FormatNumberPicture(line) + QLatin1Char(' ');
}

} // namespace pw
