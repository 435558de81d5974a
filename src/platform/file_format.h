#pragma once

#include <QString>

namespace pw {

// The encodings a page is read and written in. The first six are the ones a user can pick again.
enum class TextEncoding { Utf8, Windows1252, Latin1, Latin9, Utf16Le, Utf16Be, Utf32Le, Utf32Be };
enum class LineEndStyle { CrLf, Lf, Cr };

constexpr int PickableEncodingCount = 6;

inline QString encodingName(TextEncoding encoding)
{
    static const char *const names[] = {"UTF-8",     "Windows-1252", "ISO-8859-1", "ISO-8859-15",
                                        "UTF-16 LE", "UTF-16 BE",    "UTF-32 LE",  "UTF-32 BE"};
    return QString::fromLatin1(names[int(encoding)]);
}

// How a document's file is written: kept from the file it was read from, so that a save writes
// back the same encoding, byte-order mark and line ends. New documents are UTF-8 without a
// byte-order mark, with CR LF. Plain data, so that a document window can carry it.
struct FileFormat {
    TextEncoding encoding = TextEncoding::Utf8;
    bool bom = false;
    LineEndStyle lineEnd = LineEndStyle::CrLf;
    // U+2028, U+2029, U+FDD0 and U+FDD1 would become line ends in the text document, so the
    // file's own are held as these private-use stand-ins (in that order) and written back as
    // they were. Empty when the file had none.
    QString heldAs;

    bool operator==(const FileFormat &) const = default;
};

} // namespace pw
