#include "platform/dialog_look.h"

#include <QWidget>

namespace pw {

void SetDialogLook(QWidget &dialog)
{
    dialog.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
}

} // namespace pw
