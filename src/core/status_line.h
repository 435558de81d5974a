#pragma once

#include <QString>

class QWidget;

namespace pw {

// One blank and the text in the message panel, painted at once.
void SetStatusText(const QString &text);
void ClearStatusText();
QString StatusText(); // the message panel as it reads
// The hourglass everywhere and back; not counted, so the one who set it resets it.
void ShowWaitCursor();
void HideWaitCursor();
// Places a dialog across the middle of the screen and 40 per cent down the free height.
void CenterForm(QWidget *form);
// "Size: " and the length; "Line: ", the line and a blank.
QString SizeText(int length);
QString LineText(int line);

} // namespace pw
