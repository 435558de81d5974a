#pragma once

#include <QString>
#include <QTextCharFormat>

namespace pw {

// One character class's look: tags, text between tags, or comments.
struct FontClass {
    qint32 Color = 0; // red in the low byte
    QString Name = QStringLiteral("Arial");
    qint16 Size = 8;
    bool Bold = false;
    bool Italic = false;

    bool operator==(const FontClass &) const = default;
    QTextCharFormat toFormat() const;
    static FontClass fromFormat(const QTextCharFormat &format);
};

QColor colorFromValue(qint32 value);
qint32 valueFromColor(const QColor &color);

// The three classes, loaded from and saved to the settings.
inline FontClass TextFont;
inline FontClass HtmlFont{0, QStringLiteral("Arial"), 8, true, false};
inline FontClass CommentFont;

// Puts the three classes back to their first-run values.
void ResetFontClasses();

} // namespace pw
