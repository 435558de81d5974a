#pragma once

#include "wizards/tag_reading.h"

#include <QString>

#include <array>
#include <optional>

namespace pw {

class EditingSurface;

// "0" to "9" give 0 to 9, "A" to "F" 10 to 15; anything else, lower-case letters included, 0.
int HexDigitValue(QChar c);
// Up to six hex digits, red, green, blue, padded with "0" on the left, as a platform colour (red in
// the low byte); nothing for more than six.
std::optional<qint32> HexToColor(const QString &digits);

// The working copy of a body tag, changed one attribute at a time. An attribute is found as a blank
// followed by its name, case included; its value ends at the next blank or ">", so a quoted value
// with blanks leaves its tail behind when it is replaced.
QString Updatetag(const QString &tag, const QString &name, const QString &value);
QString DeleteSubTag(const QString &tag, const QString &name);

// The text colours of the wizard by index: Standard Text, Hyperlinks, Followed Links, Pressed Links.
inline constexpr std::array<const char *, 4> BodyColorNames = {"TEXT", "LINK", "VLINK", "ALINK"};

// What a body tag preloads into the wizard's fields. Names are read in any case, values keep their
// own; a colour is read only when it starts with "#". ONLOAD stays in the tag and is not read out,
// so OK never writes it twice.
struct BodyPreload {
    QString texture;
    std::optional<qint32> background;
    std::array<std::optional<qint32>, 4> colors;
    // BACKGROUND or ONLOAD without quotes, a colour of more than six digits, an unclosed quote or
    // no ">": the tag is not preloaded.
    bool nonStandard = false;
};
BodyPreload ReadBodyTag(const QString &tag);

// Where a document's body tag stands: the first "<BODY" in any case, up to the first ">" outside
// quotes. Read in pieces, never as a copy of the text. length is 0 when there is no ">" behind it;
// nothing when there is no "<BODY".
std::optional<TagSpan> FindBodyTag(EditingSurface &surface);

} // namespace pw
