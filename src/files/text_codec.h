#pragma once

#include "platform/file_format.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace pw {

// Called now and then during a long decode with the bytes done and the whole; returning false
// stops the decode.
using DecodeProgress = std::function<bool(qint64 done, qint64 total)>;

struct DecodedText {
    QString text;              // every line end CR LF, as the surface holds them
    FileFormat format;
    bool mixedLineEnds = false; // the file's line ends were not all alike
    bool cancelled = false;     // the progress callback stopped it; text is then empty
    bool invalid = false;       // decodeTextAs: the bytes aren't valid in that encoding; text empty
    bool binary = false;        // NUL bytes or mostly control characters near the start
    QString note;               // why the encoding isn't the one the file seemed to have
};

// Bytes of a file as text. A byte-order mark decides first (UTF-8, UTF-16 and UTF-32 in either
// order). Without one, valid UTF-8 is UTF-8, unless the file is plain ASCII and its page names a
// single-byte charset, which then holds for what the user adds; otherwise the charset the page
// declares (a META tag or an XML declaration in its first 4 KB) when it is one of ISO-8859-1,
// ISO-8859-15 and Windows-1252; otherwise Windows-1252, whose five unassigned bytes stand for the
// C1 controls of the same number so that every byte survives a round trip. The note then says why.
//
// Line ends (CR LF, LF, CR) are counted and the most frequent one is the file's convention, CR LF
// on a tie or in a file without any; a file with mixed line ends is saved with that one alone. A
// NUL byte stays a U+0000 character, which the surface keeps like any other. Decoding goes in
// chunks of about a megabyte, with progress after each; when a late byte shows the file isn't
// UTF-8, the progress starts again from 0.
DecodedText decodeText(const QByteArray &bytes, const DecodeProgress &progress = {});
// The same bytes in a chosen encoding (its byte-order mark, when there, is skipped and kept).
// Bytes that aren't valid in it give invalid and no text.
DecodedText decodeTextAs(const QByteArray &bytes, TextEncoding encoding, const DecodeProgress &progress = {});

// The bytes a text with CR LF line ends becomes in a format. A character the encoding can't hold
// makes the result empty and *unencodable its position in text (else -1).
QByteArray encodeText(const QString &text, const FileFormat &format, qsizetype *unencodable = nullptr);

// NUL bytes in the first 64 KB, or more than 30 % control characters there. A UTF-16 or UTF-32
// byte-order mark makes any file text.
bool looksBinary(const QByteArray &bytes);

// The charset a page declares in its first 4 KB, lower case; empty when it declares none.
QByteArray declaredCharset(const QByteArray &bytes);

} // namespace pw
