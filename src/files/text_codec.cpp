#include "files/text_codec.h"

#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>
#include <array>
#include <bitset>
#include <cctype>
#include <cstring>
#include <optional>

namespace pw {

namespace {

constexpr qsizetype kChunk = 1 << 20;
constexpr qsizetype kSniff = 64 * 1024;
constexpr qsizetype kDeclarationReach = 4096;

// The characters the text document takes as its own separators, and the private-use range their
// stand-ins come from.
constexpr char16_t kHeld[4] = {0x2028, 0x2029, 0xFDD0, 0xFDD1};
constexpr char16_t kPrivateFirst = 0xE000, kPrivateLast = 0xF8FF;

// 0x80 to 0x9F of Windows-1252; the five unassigned bytes stand for the C1 control of the same
// number, so that any byte string survives decoding and encoding.
constexpr char16_t kHigh1252[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

// Where ISO-8859-15 differs from ISO-8859-1: the byte and its character.
constexpr std::array<std::pair<uchar, char16_t>, 8> kLatin9 = {{
    {0xA4, 0x20AC}, {0xA6, 0x0160}, {0xA8, 0x0161}, {0xB4, 0x017D},
    {0xB8, 0x017E}, {0xBC, 0x0152}, {0xBD, 0x0153}, {0xBE, 0x0178},
}};

bool isSingleByte(TextEncoding e)
{
    return e == TextEncoding::Windows1252 || e == TextEncoding::Latin1 || e == TextEncoding::Latin9;
}

// The characters of bytes 0x80 to 0xFF in a single-byte encoding.
const std::array<char16_t, 128> &highHalf(TextEncoding e)
{
    static const auto make = [](TextEncoding which) {
        std::array<char16_t, 128> t{};
        for (int i = 0; i < 128; ++i)
            t[size_t(i)] = char16_t(0x80 + i);
        if (which == TextEncoding::Windows1252)
            std::copy(std::begin(kHigh1252), std::end(kHigh1252), t.begin());
        if (which == TextEncoding::Latin9)
            for (const auto &[byte, c] : kLatin9)
                t[byte - 0x80] = c;
        return t;
    };
    static const auto w1252 = make(TextEncoding::Windows1252);
    static const auto latin1 = make(TextEncoding::Latin1);
    static const auto latin9 = make(TextEncoding::Latin9);
    return e == TextEncoding::Windows1252 ? w1252 : e == TextEncoding::Latin9 ? latin9 : latin1;
}

// The byte for a character in a single-byte encoding, or -1.
int toSingleByte(char16_t c, TextEncoding e)
{
    if (c < 0x80)
        return c;
    const auto &high = highHalf(e);
    if (c <= 0xFF && high[c - 0x80] == c)
        return c;
    if (e == TextEncoding::Latin1)
        return -1;
    for (int i = 0; i < 128; ++i) {
        if (high[size_t(i)] == c)
            return 0x80 + i;
    }
    return -1;
}

// Turns every line end into CR LF while counting the kinds; a CR at the end of one chunk and an
// LF at the start of the next are one CR LF.
class LineEndNormalizer
{
public:
    explicit LineEndNormalizer(QString &out) : m_out(out) {}

    void append(const QChar *p, qsizetype n)
    {
        const QChar *end = p + n;
        // Most files end their lines with LF alone: then the line ends are found by a scan for one
        // character, which goes many characters at a time.
        if (!m_pendingCr && QStringView(p, n).indexOf(QChar(u'\r')) < 0) {
            const QStringView all(p, n);
            qsizetype from = 0;
            for (qsizetype lf = all.indexOf(QChar(u'\n')); lf >= 0; lf = all.indexOf(QChar(u'\n'), from)) {
                m_out.append(p + from, lf - from);
                m_out.append(u"\r\n");
                ++m_lf;
                from = lf + 1;
            }
            m_out.append(p + from, n - from);
            return;
        }
        while (p < end) {
            if (m_pendingCr) {
                m_pendingCr = false;
                if (*p == u'\n') {
                    --m_cr;
                    ++m_crlf;
                    ++p;
                    continue;
                }
            }
            const QChar *q = p;
            while (q < end && *q != u'\r' && *q != u'\n')
                ++q;
            m_out.append(p, q - p);
            if (q == end)
                break;
            m_out.append(u"\r\n");
            if (*q == u'\r') {
                ++m_cr;
                m_pendingCr = true;
            } else {
                ++m_lf;
            }
            p = q + 1;
        }
    }

    LineEndStyle style() const
    {
        if (m_crlf >= m_lf && m_crlf >= m_cr)
            return LineEndStyle::CrLf;
        return m_lf >= m_cr ? LineEndStyle::Lf : LineEndStyle::Cr;
    }
    bool mixed() const { return (m_crlf > 0) + (m_lf > 0) + (m_cr > 0) > 1; }

private:
    QString &m_out;
    qsizetype m_crlf = 0, m_lf = 0, m_cr = 0;
    bool m_pendingCr = false;
};

enum class Outcome { Done, Invalid, Cancelled };

// Decodes from start as UTF-8, chunk by chunk, each cut before a sequence that would run past it.
Outcome decodeUtf8(const QByteArray &bytes, qsizetype start, LineEndNormalizer &out, const DecodeProgress &progress)
{
    QStringDecoder decoder(QStringConverter::Utf8,
                           QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    const auto *data = reinterpret_cast<const uchar *>(bytes.constData());
    const qsizetype size = bytes.size();
    QString piece(qMin(kChunk, size), Qt::Uninitialized); // a byte gives at most one QChar
    qsizetype pos = start;
    while (pos < size) {
        qsizetype end = qMin(pos + kChunk, size);
        for (int back = 0; end < size && back < 3 && end > pos && (data[end] & 0xC0) == 0x80; ++back)
            --end;
        // One buffer for all chunks: fresh memory for each would cost a page fault per page.
        const QChar *pieceEnd = decoder.appendToBuffer(piece.data(), QByteArrayView(data + pos, end - pos));
        if (decoder.hasError())
            return Outcome::Invalid;
        out.append(piece.constData(), pieceEnd - piece.constData());
        pos = end;
        if (progress && !progress(pos, size))
            return Outcome::Cancelled;
    }
    return Outcome::Done;
}

Outcome decodeSingleByte(const QByteArray &bytes, TextEncoding e, LineEndNormalizer &out,
                         const DecodeProgress &progress)
{
    const auto &high = highHalf(e);
    const auto *data = reinterpret_cast<const uchar *>(bytes.constData());
    const qsizetype size = bytes.size();
    QString piece;
    for (qsizetype pos = 0; pos < size;) {
        const qsizetype end = qMin(pos + kChunk, size);
        piece.resize(end - pos);
        QChar *dst = piece.data();
        for (qsizetype i = pos; i < end; ++i) {
            const uchar b = data[i];
            *dst++ = QChar(b < 0x80 ? char16_t(b) : high[b - 0x80]);
        }
        out.append(piece.constData(), piece.size());
        pos = end;
        if (progress && !progress(pos, size))
            return Outcome::Cancelled;
    }
    return Outcome::Done;
}

// UTF-16 unit by unit, so that even an unpaired surrogate comes back as it was.
Outcome decodeUtf16(const QByteArray &bytes, qsizetype start, bool bigEndian, LineEndNormalizer &out,
                    const DecodeProgress &progress)
{
    const auto *data = reinterpret_cast<const uchar *>(bytes.constData());
    const qsizetype size = bytes.size();
    if ((size - start) % 2 != 0)
        return Outcome::Invalid;
    QString piece;
    for (qsizetype pos = start; pos < size;) {
        const qsizetype end = qMin(pos + kChunk, size);
        piece.resize((end - pos) / 2);
        QChar *dst = piece.data();
        for (qsizetype i = pos; i < end; i += 2)
            *dst++ = QChar(bigEndian ? char16_t(data[i] << 8 | data[i + 1]) : char16_t(data[i + 1] << 8 | data[i]));
        out.append(piece.constData(), piece.size());
        pos = end;
        if (progress && !progress(pos, size))
            return Outcome::Cancelled;
    }
    return Outcome::Done;
}

Outcome decodeUtf32(const QByteArray &bytes, qsizetype start, bool bigEndian, LineEndNormalizer &out,
                    const DecodeProgress &progress)
{
    const auto *data = reinterpret_cast<const uchar *>(bytes.constData());
    const qsizetype size = bytes.size();
    if ((size - start) % 4 != 0)
        return Outcome::Invalid;
    QString piece;
    for (qsizetype pos = start; pos < size;) {
        const qsizetype end = qMin(pos + kChunk, size);
        piece.resize(0);
        for (qsizetype i = pos; i < end; i += 4) {
            const char32_t c = bigEndian ? char32_t(data[i]) << 24 | char32_t(data[i + 1]) << 16
                                               | char32_t(data[i + 2]) << 8 | data[i + 3]
                                         : char32_t(data[i + 3]) << 24 | char32_t(data[i + 2]) << 16
                                               | char32_t(data[i + 1]) << 8 | data[i];
            if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
                return Outcome::Invalid;
            if (QChar::requiresSurrogates(c)) {
                piece.append(QChar(QChar::highSurrogate(c)));
                piece.append(QChar(QChar::lowSurrogate(c)));
            } else {
                piece.append(QChar(char16_t(c)));
            }
        }
        out.append(piece.constData(), piece.size());
        pos = end;
        if (progress && !progress(pos, size))
            return Outcome::Cancelled;
    }
    return Outcome::Done;
}

struct Bom {
    TextEncoding encoding;
    qsizetype length;
};

// UTF-32 LE first: its mark begins with UTF-16 LE's.
std::optional<Bom> bomOf(const QByteArray &bytes)
{
    if (bytes.startsWith(QByteArrayView("\xFF\xFE\0\0", 4)))
        return Bom{TextEncoding::Utf32Le, 4};
    if (bytes.startsWith(QByteArrayView("\0\0\xFE\xFF", 4)))
        return Bom{TextEncoding::Utf32Be, 4};
    if (bytes.startsWith("\xFF\xFE"))
        return Bom{TextEncoding::Utf16Le, 2};
    if (bytes.startsWith("\xFE\xFF"))
        return Bom{TextEncoding::Utf16Be, 2};
    if (bytes.startsWith("\xEF\xBB\xBF"))
        return Bom{TextEncoding::Utf8, 3};
    return std::nullopt;
}

// Decodes bytes from start in one encoding into result; false when they aren't valid in it.
bool decodeInto(DecodedText &result, const QByteArray &bytes, qsizetype start, TextEncoding e,
                const DecodeProgress &progress)
{
    result.text.truncate(0); // keeps the room reserved
    LineEndNormalizer out(result.text);
    Outcome outcome = Outcome::Done;
    switch (e) {
    case TextEncoding::Utf8:
        outcome = decodeUtf8(bytes, start, out, progress);
        break;
    case TextEncoding::Windows1252:
    case TextEncoding::Latin1:
    case TextEncoding::Latin9:
        outcome = decodeSingleByte(bytes, e, out, progress);
        break;
    case TextEncoding::Utf16Le:
    case TextEncoding::Utf16Be:
        outcome = decodeUtf16(bytes, start, e == TextEncoding::Utf16Be, out, progress);
        break;
    case TextEncoding::Utf32Le:
    case TextEncoding::Utf32Be:
        outcome = decodeUtf32(bytes, start, e == TextEncoding::Utf32Be, out, progress);
        break;
    }
    if (outcome == Outcome::Cancelled) {
        result.text.clear();
        result.cancelled = true;
        return true;
    }
    if (outcome == Outcome::Invalid)
        return false;
    result.format = {e, start > 0, out.style(), {}};
    result.mixedLineEnds = out.mixed();
    return true;
}

// The file's own separators become private-use characters the text doesn't hold, which the
// format remembers.
void holdSeparators(DecodedText &result)
{
    QString &text = result.text;
    // Most characters are below every held one: one comparison each.
    constexpr char16_t lowest = *std::min_element(std::begin(kHeld), std::end(kHeld));
    const auto isHeld = [](QChar c) {
        return c.unicode() >= lowest && std::find(std::begin(kHeld), std::end(kHeld), c.unicode()) != std::end(kHeld);
    };
    if (std::none_of(text.cbegin(), text.cend(), isHeld))
        return;
    std::bitset<kPrivateLast - kPrivateFirst + 1> used;
    for (const QChar c : std::as_const(text)) {
        if (c.unicode() >= kPrivateFirst && c.unicode() <= kPrivateLast)
            used.set(c.unicode() - kPrivateFirst);
    }
    QString standIns;
    for (char16_t c = kPrivateLast; standIns.size() < 4 && c >= kPrivateFirst; --c) {
        if (!used.test(c - kPrivateFirst))
            standIns.append(QChar(c));
    }
    if (standIns.size() < 4)
        return; // a text of every private-use character: nothing is left to stand in
    for (QChar &c : text) {
        for (int i = 0; i < 4; ++i) {
            if (c.unicode() == kHeld[i])
                c = standIns[i];
        }
    }
    result.format.heldAs = standIns;
}

// Counts of well-formed multi-byte sequences and of bytes that fit none.
void utf8Census(const QByteArray &bytes, qsizetype &valid, qsizetype &invalid)
{
    valid = invalid = 0;
    const auto *d = reinterpret_cast<const uchar *>(bytes.constData());
    const qsizetype n = bytes.size();
    for (qsizetype i = 0; i < n;) {
        const uchar b = d[i];
        if (b < 0x80) {
            ++i;
            continue;
        }
        const int length = b >= 0xC2 && b <= 0xDF ? 2 : b >= 0xE0 && b <= 0xEF ? 3 : b >= 0xF0 && b <= 0xF4 ? 4 : 0;
        // The second byte's narrower ranges rule out overlong forms, surrogates and beyond U+10FFFF.
        const uchar low = b == 0xE0 ? 0xA0 : b == 0xF0 ? 0x90 : 0x80;
        const uchar high = b == 0xED ? 0x9F : b == 0xF4 ? 0x8F : 0xBF;
        int k = 1;
        if (length && i + 1 < n && (d[i + 1] < low || d[i + 1] > high))
            k = 0;
        while (length && k && k < length && i + k < n && (d[i + k] & 0xC0) == 0x80)
            ++k;
        if (length && k == length) {
            ++valid;
            i += length;
        } else {
            ++invalid;
            ++i;
        }
    }
}

bool isAscii(const QByteArray &bytes)
{
    return std::all_of(bytes.cbegin(), bytes.cend(), [](char c) { return uchar(c) < 0x80; });
}

std::optional<TextEncoding> encodingForCharset(const QByteArray &name)
{
    static const std::pair<const char *, TextEncoding> names[] = {
        {"utf-8", TextEncoding::Utf8},          {"utf8", TextEncoding::Utf8},
        {"iso-8859-1", TextEncoding::Latin1},   {"iso8859-1", TextEncoding::Latin1},
        {"iso_8859-1", TextEncoding::Latin1},   {"latin1", TextEncoding::Latin1},
        {"latin-1", TextEncoding::Latin1},      {"l1", TextEncoding::Latin1},
        {"iso-ir-100", TextEncoding::Latin1},   {"cp819", TextEncoding::Latin1},
        {"windows-1252", TextEncoding::Windows1252}, {"cp1252", TextEncoding::Windows1252},
        {"x-cp1252", TextEncoding::Windows1252}, {"us-ascii", TextEncoding::Windows1252},
        {"ascii", TextEncoding::Windows1252},   {"iso-8859-15", TextEncoding::Latin9},
        {"iso8859-15", TextEncoding::Latin9},   {"iso_8859-15", TextEncoding::Latin9},
        {"latin-9", TextEncoding::Latin9},      {"latin9", TextEncoding::Latin9},
        {"l9", TextEncoding::Latin9},
    };
    for (const auto &[known, encoding] : names) {
        if (name == known)
            return encoding;
    }
    return std::nullopt;
}

// The name that follows "key" and an "=" in text from at on, lower case, or empty.
QByteArray valueAfter(const QByteArray &lower, qsizetype at, qsizetype end)
{
    const auto isSpace = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (at < end && isSpace(lower[at]))
        ++at;
    if (at >= end || lower[at] != '=')
        return {};
    ++at;
    while (at < end && (isSpace(lower[at]) || lower[at] == '"' || lower[at] == '\''))
        ++at;
    qsizetype stop = at;
    while (stop < end && (std::isalnum(uchar(lower[stop])) || std::strchr("-_.:", lower[stop])))
        ++stop;
    return lower.mid(at, stop - at);
}

} // namespace

QByteArray declaredCharset(const QByteArray &bytes)
{
    const QByteArray lower = bytes.left(kDeclarationReach).toLower();
    if (lower.startsWith("<?xml")) {
        const qsizetype end = lower.indexOf("?>");
        const qsizetype key = lower.indexOf("encoding", 5);
        if (key > 0 && (end < 0 || key < end)) {
            const QByteArray name = valueAfter(lower, key + 8, end < 0 ? lower.size() : end);
            if (!name.isEmpty())
                return name;
        }
    }
    for (qsizetype meta = lower.indexOf("<meta"); meta >= 0; meta = lower.indexOf("<meta", meta + 5)) {
        qsizetype end = lower.indexOf('>', meta);
        if (end < 0)
            end = lower.size();
        const qsizetype key = lower.indexOf("charset", meta);
        if (key < 0 || key > end)
            continue;
        const QByteArray name = valueAfter(lower, key + 7, end);
        if (!name.isEmpty())
            return name;
    }
    return {};
}

bool looksBinary(const QByteArray &bytes)
{
    if (const auto bom = bomOf(bytes); bom && bom->encoding != TextEncoding::Utf8)
        return false;
    const QByteArrayView head = QByteArrayView(bytes).first(qMin(bytes.size(), kSniff));
    if (head.isEmpty())
        return false;
    if (head.contains('\0'))
        return true;
    const auto control = std::count_if(head.begin(), head.end(), [](char c) {
        const uchar b = uchar(c);
        return (b < 0x20 && b != '\t' && b != '\n' && b != '\r' && b != '\f' && b != 0x1B) || b == 0x7F;
    });
    return control * 10 > head.size() * 3;
}

qsizetype countByte(const QByteArray &bytes, char c)
{
    qsizetype n = 0;
    const char *const end = bytes.constData() + bytes.size();
    for (const char *p = bytes.constData(); (p = static_cast<const char *>(std::memchr(p, c, size_t(end - p)))); ++p)
        ++n;
    return n;
}

DecodedText decodeText(const QByteArray &bytes, const DecodeProgress &progress)
{
    DecodedText result;
    result.binary = looksBinary(bytes);
    // Enough for any line-end growth, so the text is never copied to grow.
    const qsizetype ends = countByte(bytes, '\n') + countByte(bytes, '\r');
    result.text.reserve(bytes.size() + ends);

    const auto done = [&result] {
        if (!result.cancelled && !isSingleByte(result.format.encoding))
            holdSeparators(result);
        return result;
    };
    const auto bom = bomOf(bytes);
    if (bom) {
        if (decodeInto(result, bytes, bom->length, bom->encoding, progress))
            return done();
        // FF FE 00 00 may also be UTF-16 that starts with U+0000.
        if (bom->encoding == TextEncoding::Utf32Le && decodeInto(result, bytes, 2, TextEncoding::Utf16Le, progress))
            return done();
    }

    const QByteArray charset = declaredCharset(bytes);
    const std::optional<TextEncoding> declared = encodingForCharset(charset);
    const bool declaredSingleByte = declared && isSingleByte(*declared);
    if (declaredSingleByte && isAscii(bytes)) {
        decodeInto(result, bytes, 0, *declared, progress);
        return done();
    }
    // Behind a UTF-8 mark that failed, the whole file isn't UTF-8 either.
    const bool utf8Failed = bom && bom->encoding == TextEncoding::Utf8;
    if (!utf8Failed && decodeInto(result, bytes, 0, TextEncoding::Utf8, progress))
        return done();
    if (declaredSingleByte) {
        decodeInto(result, bytes, 0, *declared, progress);
        return done();
    }
    decodeInto(result, bytes, 0, TextEncoding::Windows1252, progress);
    qsizetype valid = 0, invalid = 0;
    utf8Census(bytes, valid, invalid);
    if (declared == TextEncoding::Utf8 || (valid > 0 && invalid <= valid))
        result.note = QStringLiteral("not valid UTF-8, opened as Windows-1252");
    else if (!charset.isEmpty() && !declared)
        result.note = QStringLiteral("charset \"%1\" unknown, opened as Windows-1252").arg(QString::fromLatin1(charset));
    return done();
}

DecodedText decodeTextAs(const QByteArray &bytes, TextEncoding encoding, const DecodeProgress &progress)
{
    DecodedText result;
    result.binary = looksBinary(bytes);
    qsizetype start = 0;
    if (const auto bom = bomOf(bytes); bom && bom->encoding == encoding)
        start = bom->length;
    if (!decodeInto(result, bytes, start, encoding, progress)) {
        result.text.clear();
        result.invalid = true;
        return result;
    }
    if (!result.cancelled && !isSingleByte(encoding))
        holdSeparators(result);
    return result;
}

namespace {

// Turns each CR LF of encoded bytes from 'from' on into one byte, in place; far quicker than
// replacing in the string before encoding.
void shortenLineEnds(QByteArray &bytes, qsizetype from, char end)
{
    char *data = bytes.data();
    const qsizetype size = bytes.size();
    qsizetype read = from, write = from;
    while (read < size) {
        const void *cr = std::memchr(data + read, '\r', size_t(size - read));
        const qsizetype stop = cr ? static_cast<const char *>(cr) - data : size;
        std::memmove(data + write, data + read, size_t(stop - read));
        write += stop - read;
        read = stop;
        if (read == size)
            break;
        if (read + 1 < size && data[read + 1] == '\n') {
            data[write++] = end;
            read += 2;
        } else {
            data[write++] = data[read++];
        }
    }
    bytes.truncate(write);
}

char lineEndByte(LineEndStyle style)
{
    return style == LineEndStyle::Lf ? '\n' : '\r';
}

QByteArray encodeSingleByte(const QString &text, TextEncoding e, qsizetype *unencodable)
{
    // One byte a character, so the bytes are never more than the characters.
    QByteArray bytes(text.size(), Qt::Uninitialized);
    char *out = bytes.data();
    const QChar *chars = text.constData();
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const int b = toSingleByte(chars[i].unicode(), e);
        if (b < 0) {
            if (unencodable)
                *unencodable = i;
            return QByteArray();
        }
        *out++ = char(b);
    }
    bytes.truncate(out - bytes.constData());
    return bytes;
}

QByteArray encodeWide(const QString &crlfText, const FileFormat &format, qsizetype *unencodable)
{
    const bool wide32 = format.encoding == TextEncoding::Utf32Le || format.encoding == TextEncoding::Utf32Be;
    // UTF-32 has no unit for an unpaired surrogate; UTF-16 keeps it as it is.
    for (qsizetype i = 0; wide32 && i < crlfText.size(); ++i) {
        const QChar c = crlfText[i];
        if (c.isHighSurrogate() && i + 1 < crlfText.size() && crlfText[i + 1].isLowSurrogate()) {
            ++i;
        } else if (c.isSurrogate()) {
            if (unencodable)
                *unencodable = i;
            return QByteArray();
        }
    }
    QString text = crlfText;
    if (format.lineEnd != LineEndStyle::CrLf)
        text.replace(QLatin1String("\r\n"), QString(QLatin1Char(lineEndByte(format.lineEnd))));
    const bool big = format.encoding == TextEncoding::Utf16Be || format.encoding == TextEncoding::Utf32Be;
    QByteArray bytes;
    bytes.reserve((text.size() + 1) * (wide32 ? 4 : 2));
    const auto put = [&bytes, big](char32_t unit, int width) {
        for (int k = 0; k < width; ++k)
            bytes.append(char(unit >> (8 * (big ? width - 1 - k : k))));
    };
    if (format.bom)
        put(0xFEFF, wide32 ? 4 : 2);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (!wide32) {
            put(c, 2);
            continue;
        }
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            put(QChar::surrogateToUcs4(c, text[i + 1].unicode()), 4);
            ++i;
        } else {
            put(c, 4);
        }
    }
    return bytes;
}

} // namespace

QByteArray encodeText(const QString &crlfText, const FileFormat &format, qsizetype *unencodable)
{
    if (unencodable)
        *unencodable = -1;
    QString restored;
    if (!format.heldAs.isEmpty()) {
        restored = crlfText;
        for (QChar &c : restored) {
            const qsizetype i = format.heldAs.indexOf(c);
            if (i >= 0)
                c = QChar(kHeld[i]);
        }
    }
    const QString &text = format.heldAs.isEmpty() ? crlfText : restored;

    QByteArray bytes;
    qsizetype start = 0;
    switch (format.encoding) {
    case TextEncoding::Utf8: {
        QStringEncoder encoder(QStringConverter::Utf8);
        start = format.bom ? 3 : 0;
        bytes = QByteArray(start + encoder.requiredSpace(text.size()), Qt::Uninitialized);
        std::memcpy(bytes.data(), "\xEF\xBB\xBF", size_t(start));
        bytes.truncate(encoder.appendToBuffer(bytes.data() + start, text) - bytes.constData());
        break;
    }
    case TextEncoding::Windows1252:
    case TextEncoding::Latin1:
    case TextEncoding::Latin9:
        bytes = encodeSingleByte(text, format.encoding, unencodable);
        if (bytes.isEmpty())
            return bytes;
        break;
    default:
        return encodeWide(text, format, unencodable);
    }
    if (format.lineEnd != LineEndStyle::CrLf)
        shortenLineEnds(bytes, start, lineEndByte(format.lineEnd));
    return bytes;
}

} // namespace pw
