#pragma once

#include <QString>
#include <QTextCharFormat>

namespace pw {

// One character class's look: tags, text between tags, or comments. The first-run values live
// with the settings (DefaultClassFonts).
struct FontClass {
    qint32 Color = 0; // red in the low byte
    QString Name;
    qint16 Size = 0;
    bool Bold = false;
    bool Italic = false;

    bool operator==(const FontClass &) const = default;
    QTextCharFormat toFormat() const;
    static FontClass fromFormat(const QTextCharFormat &format);
};

QColor colorFromValue(qint32 value);
qint32 valueFromColor(const QColor &color);

// The three classes: text between tags, tags, comments.
struct ClassFonts {
    FontClass text;
    FontClass html;
    FontClass comment;

    const FontClass &forTag(bool isTag) const { return isTag ? html : text; }
    bool operator==(const ClassFonts &) const = default;
};

} // namespace pw
