#include "find/search_dialog.h"

#include "core/status_line.h"

#include <QDialog>
#include <QEvent>
#include <QPushButton>

namespace pw {

void SetSearchDialogLook(QDialog &dialog)
{
    dialog.setWindowFlags(Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    dialog.setModal(false);
    dialog.setAttribute(Qt::WA_DeleteOnClose);
}

void ShowSearchDialog(QDialog &dialog)
{
    dialog.adjustSize();
    CenterForm(&dialog);
    dialog.show();
    dialog.raise();
    dialog.activateWindow();
}

QPushButton *SearchButton(QWidget *parent, const char *name, const QString &caption)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    return button;
}

LostFocusWatch::LostFocusWatch(QWidget *widget, std::function<void()> lostFocus)
    : QObject(widget), m_lostFocus(std::move(lostFocus))
{
    widget->installEventFilter(this);
}

bool LostFocusWatch::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut)
        m_lostFocus();
    return QObject::eventFilter(watched, event);
}

} // namespace pw
