#pragma once

namespace pw {

enum class TextEncoding { Utf8, Windows1252 };
enum class LineEndStyle { CrLf, Lf, Cr };

// How a document's file is written: kept from the file it was read from, so that a save writes
// back the same encoding, byte-order mark and line ends. New documents are UTF-8 without a
// byte-order mark, with CR LF. Plain data, so that a document window can carry it.
struct FileFormat {
    TextEncoding encoding = TextEncoding::Utf8;
    bool bom = false;
    LineEndStyle lineEnd = LineEndStyle::CrLf;

    bool operator==(const FileFormat &) const = default;
};

} // namespace pw
