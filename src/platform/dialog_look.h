#pragma once

class QWidget;

namespace pw {

// A dialog's frame: a title and a close box, no minimize or maximize buttons.
void SetDialogLook(QWidget &dialog);

} // namespace pw
