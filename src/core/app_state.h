#pragma once

#include <QString>

namespace pw {

// The line end of all generated text and of messages.
inline const QString LineEnd = QStringLiteral("\r\n");

// The 16-bit booleans of the records: -1 is true and 0 false.
constexpr qint16 True = -1;
constexpr qint16 False = 0;

// "1.00.0": major, the minor number formatted "##0#", revision.
QString VersionText();
// The main window's caption and the title of every message box.
QString AppTitle();

// Picture "#,###,###" and "###,###": grouped digits, and nothing at all for zero.
QString FormatNumberPicture(qint64 value);

// Removes all blanks and NUL characters from the end.
QString TrimTrailing(const QString &text);

// The one rule for "is it numeric": blanks around, an optional sign, digits with at most one
// decimal point, at least one digit.
bool IsNumeric(const QString &text);

constexpr double TwipsPerPixel = 15.0;
inline int twipsToPixels(double twips) { return int(twips / TwipsPerPixel + (twips >= 0 ? 0.5 : -0.5)); }
inline double pixelsToTwips(int pixels) { return pixels * TwipsPerPixel; }

} // namespace pw
