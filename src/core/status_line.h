#pragma once

#include <QString>

class QDialog;
class QWidget;

namespace pw {

// Places a dialog across the middle of the screen and 40 per cent down the free height.
void CenterForm(QWidget *form);
// A dialog at its own size, centred, shown modal to its window without a loop of its own.
void ShowCentred(QDialog &dialog);
// Places a window centred over another (the main window), kept on its screen.
void CenterOver(QWidget *window, const QWidget *over);
// "Size: " and the length; "Line: ", the line and a blank.
QString SizeText(int length);
QString LineText(int line);

} // namespace pw
