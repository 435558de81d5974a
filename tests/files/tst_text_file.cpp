#include "test_support.h"

#include "files/text_file.h"
#include "platform/file_handles.h"

#include <QRegularExpression>

#include <csignal>
#include <optional>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace pw;

Q_DECLARE_METATYPE(pw::ErrorCode)
Q_DECLARE_METATYPE(pw::FileFormat)
Q_DECLARE_METATYPE(pw::SaveFailure)

namespace {

constexpr qsizetype MiB = 1 << 20;

uint modeOf(const QString &path)
{
    struct stat st = {};
    return ::lstat(QFile::encodeName(path).constData(), &st) == 0 ? st.st_mode & 07777 : 0;
}

bool setMode(const QString &path, uint mode)
{
    return ::chmod(QFile::encodeName(path).constData(), mode) == 0;
}

// A message of the table with %1 the path and %2 its folder.
QString filled(QString message, const QString &path, const QString &folder)
{
    return message.replace(QLatin1String("%1"), path).replace(QLatin1String("%2"), folder);
}

// Writes past a small size fail with EFBIG, as they do on a full disk with ENOSPC.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : m_oldHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_old);
        struct rlimit limit = m_old;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }

private:
    void (*m_oldHandler)(int);
    struct rlimit m_old = {};
};

} // namespace

class TestTextFile : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> temp;
    QString path(const QString &name) const { return temp->filePath(name); }
    QStringList entries(const QString &folder) const
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

private Q_SLOTS:
    void init()
    {
        temp = std::make_unique<QTemporaryDir>();
        QVERIFY(temp->isValid());
    }
    void cleanup()
    {
        // A failed test may leave a folder read-only.
        setMode(temp->path(), 0700);
        setMode(path("sub"), 0700);
        temp.reset();
    }

    // Every file comes back byte for byte after an open and a save without edits; the encoding
    // is found as a user would expect, and said when it is not what the file seemed to be.
    void unchangedTextRoundTrips_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<FileFormat>("format");
        QTest::addColumn<QString>("text"); // what the user reads, where it matters
        QTest::addColumn<QString>("note");
        const auto f = [](TextEncoding e, LineEndStyle end = LineEndStyle::CrLf, bool bom = false) {
            return FileFormat{e, bom, end, {}};
        };
        const FileFormat utf8CrLf = f(TextEncoding::Utf8), utf8Bom = f(TextEncoding::Utf8, LineEndStyle::CrLf, true);
        const FileFormat utf8Lf = f(TextEncoding::Utf8, LineEndStyle::Lf), utf8Cr = f(TextEncoding::Utf8, LineEndStyle::Cr);
        const FileFormat cp1252Lf = f(TextEncoding::Windows1252, LineEndStyle::Lf);
        const FileFormat cp1252CrLf = f(TextEncoding::Windows1252);
        QByteArray everyByte;
        for (int b = 0; b < 256; ++b)
            if (b != '\r')
                everyByte += char(b);
        const auto utf16 = [](const QString &text, bool big) {
            QByteArray bytes(big ? "\xFE\xFF" : "\xFF\xFE");
            for (const QChar c : text) {
                bytes += char(big ? c.unicode() >> 8 : c.unicode());
                bytes += char(big ? c.unicode() : c.unicode() >> 8);
            }
            return bytes;
        };
        const auto utf32 = [](const QString &text, bool big) {
            QByteArray bytes = big ? QByteArray("\0\0\xFE\xFF", 4) : QByteArray("\xFF\xFE\0\0", 4);
            for (const char32_t c : text.toUcs4())
                for (int k = 0; k < 4; ++k)
                    bytes += char(c >> 8 * (big ? 3 - k : k));
            return bytes;
        };
        const QString page = QStringLiteral("<P>caf\u00E9 \u20AC \U0001F600</P>");
        const QString meta = QStringLiteral("<META HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; charset=%1\">\n");
        const QString notUtf8 = QStringLiteral("not valid UTF-8, opened as Windows-1252");

        QTest::newRow("LF") << QByteArray("<P>a</P>\n<P>b</P>\n") << utf8Lf << QString() << QString();
        QTest::newRow("CR LF") << QByteArray("<P>a</P>\r\n<P>b</P>\r\n") << utf8CrLf << QString() << QString();
        QTest::newRow("CR") << QByteArray("<P>a</P>\r<P>b</P>\r") << utf8Cr << QString() << QString();
        QTest::newRow("no line end") << QByteArray("<P>") << utf8CrLf << QString() << QString();
        QTest::newRow("one long line") << QByteArray("<P>ab</P> ").repeated(1000) + "\n<P>" << utf8Lf << QString() << QString();
        QTest::newRow("empty file") << QByteArray() << utf8CrLf << QString() << QString();
        QTest::newRow("UTF-8") << page.toUtf8() + "\n" << utf8Lf << page + "\r\n" << QString();
        QTest::newRow("UTF-8 with BOM") << QByteArray("\xEF\xBB\xBF<P>caf\xC3\xA9</P>\r\n\r\n") << utf8Bom << QString() << QString();
        QTest::newRow("BOM only") << QByteArray("\xEF\xBB\xBF") << utf8Bom << QString() << QString();
        QTest::newRow("U+FEFF inside") << QByteArray("a\xEF\xBB\xBF" "b") << utf8CrLf << QString() << QString();
        QTest::newRow("NUL and controls") << QByteArray("a\0b\x01\x1F\x7F\tc  \n\nc\0", 14) << utf8Lf << QString() << QString();
        QTest::newRow("separators the text document would break at")
            << QByteArray("a\xE2\x80\xA8" "b\xE2\x80\xA9" "c\xEF\xB7\x90" "d\xEF\xB7\x91\r\n") << utf8CrLf << QString() << QString();
        QTest::newRow("Windows-1252") << QByteArray("caf\xE9 \x80 \x93q\x94\r\n") << cp1252CrLf
                                      << QStringLiteral("caf\u00E9 \u20AC \u201Cq\u201D\r\n") << QString();
        QTest::newRow("every byte") << everyByte << cp1252Lf << QString() << QString();
        QTest::newRow("truncated UTF-8 at the end") << QByteArray("caf\xC3") << cp1252CrLf << QString() << QString();
        QTest::newRow("overlong UTF-8") << QByteArray("\xC0\xAF\n") << cp1252Lf << QString() << QString();
        QTest::newRow("UTF-8 of a surrogate") << QByteArray("\xED\xA0\x80") << cp1252CrLf << QString() << QString();
        QTest::newRow("BOM then 1252") << QByteArray("\xEF\xBB\xBF" "caf\xE9") << cp1252CrLf << QString() << notUtf8;
        QTest::newRow("nearly UTF-8") << QByteArray("caf\xC3\xA9 na\xEFve \xE2\x82\xAC") << cp1252CrLf
                                      << QStringLiteral("caf\u00C3\u00A9 na\u00EFve \u00E2\u201A\u00AC") << notUtf8;

        QTest::newRow("UTF-16 LE") << utf16(page + "\r\n", false) << f(TextEncoding::Utf16Le, LineEndStyle::CrLf, true)
                                   << page + "\r\n" << QString();
        QTest::newRow("UTF-16 BE, LF") << utf16(page + "\n", true) << f(TextEncoding::Utf16Be, LineEndStyle::Lf, true)
                                       << page + "\r\n" << QString();
        QTest::newRow("UTF-16 with an unpaired surrogate") << utf16(QString(QChar(0xD800)) + "a", false)
                                                           << f(TextEncoding::Utf16Le, LineEndStyle::CrLf, true) << QString() << QString();
        QTest::newRow("UTF-16 of separators") << utf16(QStringLiteral("a\u2029b"), true)
                                              << f(TextEncoding::Utf16Be, LineEndStyle::CrLf, true) << QString() << QString();
        QTest::newRow("UTF-32 LE") << utf32(page, false) << f(TextEncoding::Utf32Le, LineEndStyle::CrLf, true) << page << QString();
        QTest::newRow("UTF-32 BE, CR") << utf32(page + "\r", true) << f(TextEncoding::Utf32Be, LineEndStyle::Cr, true)
                                       << page + "\r\n" << QString();

        QTest::newRow("declared ISO-8859-1") << meta.arg("iso-8859-1").toLatin1() + "caf\xE9 \x80"
                                             << f(TextEncoding::Latin1, LineEndStyle::Lf)
                                             << meta.arg("iso-8859-1").replace("\n", "\r\n") + QStringLiteral("caf\u00E9 \u0080") << QString();
        QTest::newRow("declared ISO-8859-15") << QByteArray("<meta charset='ISO-8859-15'>\xA4\xBD") << f(TextEncoding::Latin9)
                                              << QStringLiteral("<meta charset='ISO-8859-15'>\u20AC\u0153") << QString();
        QTest::newRow("declared Windows-1252") << meta.arg("windows-1252").toLatin1() + "\x80" << f(TextEncoding::Windows1252, LineEndStyle::Lf)
                                               << QString() << QString();
        QTest::newRow("XML declaration") << QByteArray("<?xml version=\"1.0\" encoding=\"latin1\"?>\r\n\xE9") << f(TextEncoding::Latin1)
                                         << QStringLiteral("<?xml version=\"1.0\" encoding=\"latin1\"?>\r\n\u00E9") << QString();
        QTest::newRow("plain ASCII follows its declaration") << meta.arg("ISO-8859-1").toLatin1() << f(TextEncoding::Latin1, LineEndStyle::Lf)
                                                              << QString() << QString();
        QTest::newRow("valid UTF-8 outweighs a declaration") << meta.arg("iso-8859-1").toLatin1() + "caf\xC3\xA9"
                                                              << utf8Lf << QString() << QString();
        QTest::newRow("declared UTF-8 that isn't") << meta.arg("utf-8").toLatin1() + "caf\xE9" << cp1252Lf << QString() << notUtf8;
        QTest::newRow("every byte, declared Latin-1") << meta.arg("latin1").toLatin1() + everyByte
                                                       << f(TextEncoding::Latin1, LineEndStyle::Lf) << QString() << QString();
        QTest::newRow("unknown charset") << meta.arg("x-mac-roman").toLatin1() + "\xE9" << cp1252Lf << QString()
                                         << QStringLiteral("charset \"x-mac-roman\" unknown, opened as Windows-1252");
    }
    void unchangedTextRoundTrips()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(FileFormat, format);
        QFETCH(QString, text);
        QFETCH(QString, note);
        const DecodedText decoded = decodeText(bytes);
        QCOMPARE(decoded.format.encoding, format.encoding);
        QCOMPARE(decoded.format.bom, format.bom);
        QCOMPARE(decoded.format.lineEnd, format.lineEnd);
        QCOMPARE(decoded.note, note);
        if (!text.isNull())
            QCOMPARE(decoded.text, text);
        QVERIFY(!decoded.mixedLineEnds);
        // In the text every line end is CR LF, nothing lone, and nothing else ends a line.
        QVERIFY(!decoded.text.contains(QRegularExpression(QStringLiteral("\r(?!\n)|(?<!\r)\n|[\u2028\u2029\uFDD0\uFDD1]"))));
        QCOMPARE(encodeText(decoded.text, decoded.format), bytes);
        // What the user opens goes into the surface and comes back from it for the save.
        EditingSurface surface;
        surface.loadText(decoded.text, {});
        QCOMPARE(encodeText(surface.Text(), decoded.format), bytes);

        // And through the files, as an open and a save without edits.
        const QString file = path("page.html");
        QVERIFY(writeFile(file, bytes));
        FileHandles handles;
        const ReadResult read = openDocumentFile(handles, 1, file);
        QCOMPARE(read.error, ErrorCode::None);
        QCOMPARE(read.decoded.text, decoded.text);
        QVERIFY(saveDocumentFile(handles, 1, file, read.decoded.text, read.decoded.format).ok());
        QCOMPARE(fileBytes(file), bytes);
    }

    // The text a file decodes to, and the bytes it is saved as again: a file of mixed line ends gets
    // the most common one alone.
    void decoding_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("saved");
        QTest::newRow("1252 euro and quotes")
            << QByteArray("\x80\x93\x94") << QStringLiteral("\u20AC\u201C\u201D") << QByteArray("\x80\x93\x94");
        QTest::newRow("1252 unassigned byte") << QByteArray("\x81") << QStringLiteral("\u0081") << QByteArray("\x81");
        QTest::newRow("LF CR is two line ends") << QByteArray("a\n\rb\n") << "a\r\n\r\nb\r\n" << QByteArray("a\n\nb\n");
        const QString abc = QStringLiteral("a\r\nb\r\nc\r\n");
        QTest::newRow("more LF") << QByteArray("a\nb\nc\r\n") << abc << QByteArray("a\nb\nc\n");
        QTest::newRow("more CR LF") << QByteArray("a\r\nb\r\nc\n") << abc << QByteArray("a\r\nb\r\nc\r\n");
        QTest::newRow("more CR") << QByteArray("a\rb\rc\n") << abc << QByteArray("a\rb\rc\r");
        QTest::newRow("tie goes to CR LF") << QByteArray("a\nb\r\n") << "a\r\nb\r\n" << QByteArray("a\r\nb\r\n");
    }
    void decoding()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QFETCH(QByteArray, saved);
        const DecodedText decoded = decodeText(bytes);
        QCOMPARE(decoded.text, text);
        QCOMPARE(decoded.mixedLineEnds, saved != bytes);
        QCOMPARE(encodeText(decoded.text, decoded.format), saved);
    }

    // Large files are decoded in pieces; what straddles a cut must come out whole.
    void sequenceAcrossAChunkCut_data()
    {
        QTest::addColumn<QByteArray>("sequence");
        QTest::newRow("CR LF") << QByteArray("\r\n");
        QTest::newRow("two bytes") << QByteArray("\xC3\xA9");
        QTest::newRow("three bytes") << QByteArray("\xE2\x82\xAC");
        QTest::newRow("four bytes") << QByteArray("\xF0\x9F\x98\x80");
        QTest::newRow("a late invalid byte: all 1252") << QByteArray("\xE9");
    }
    void sequenceAcrossAChunkCut()
    {
        QFETCH(QByteArray, sequence);
        for (qsizetype before = MiB - 4; before <= MiB + 1; ++before) {
            const QByteArray bytes = QByteArray(before, 'a') + sequence + "z";
            const DecodedText decoded = decodeText(bytes);
            const bool valid = sequence != "\xE9";
            QCOMPARE(decoded.format.encoding, valid ? TextEncoding::Utf8 : TextEncoding::Windows1252);
            QVERIFY(!decoded.mixedLineEnds);
            const QString expected = valid ? QString::fromUtf8(sequence) : QStringLiteral("\u00E9");
            QCOMPARE(decoded.text.mid(before), expected + "z");
            QCOMPARE(encodeText(decoded.text, decoded.format), bytes);
        }
    }

    // The progress runs to the end unless it answers false: then the decode gives no text.
    void progress_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("stopAt"); // the call that answers false; 0 none
        QTest::newRow("to the end") << QByteArray(3 * MiB + 7, 'a') << 0;
        QTest::newRow("cancelled, UTF-8") << QByteArray(3 * MiB, 'a') << 2;
        QTest::newRow("cancelled, 1252") << QByteArray("\xE9") + QByteArray(3 * MiB, 'a') << 2;
    }
    void progress()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, stopAt);
        QList<qint64> done;
        const DecodedText decoded = decodeText(bytes, [&](qint64 d, qint64 total) {
            done.append(total == bytes.size() ? d : -1);
            return done.size() != stopAt;
        });
        QCOMPARE(decoded.cancelled, stopAt != 0);
        QCOMPARE(decoded.text.isEmpty(), stopAt != 0);
        QVERIFY(std::is_sorted(done.cbegin(), done.cend()));
        QVERIFY(done.first() > 0);
        if (stopAt)
            QCOMPARE(done.size(), stopAt);
        else
            QVERIFY(done.size() >= 3 && done.last() == bytes.size());
    }

    void saveKeepsTheMode_data()
    {
        QTest::addColumn<uint>("mode"); // 0: a new file
        QTest::addColumn<uint>("expected");
        QTest::newRow("owner only") << 0600u << 0600u;
        QTest::newRow("group reads") << 0640u << 0640u;
        QTest::newRow("executable") << 0755u << 0755u;
        QTest::newRow("a new file takes the umask") << 0u << 0644u;
    }
    void saveKeepsTheMode()
    {
        QFETCH(uint, mode);
        QFETCH(uint, expected);
        const QString file = path("page.html");
        if (mode)
            QVERIFY(writeFile(file, "old") && setMode(file, mode));
        const mode_t mask = ::umask(022);
        const SaveResult result = saveTextFile(file, "new", FileFormat{});
        ::umask(mask);
        QVERIFY(result.ok());
        QCOMPARE(fileBytes(file), QByteArray("new"));
        QCOMPARE(modeOf(file), expected);
        QCOMPARE(entries(temp->path()), QStringList{"page.html"});
    }

    void saveGoesThroughSymlinks_data()
    {
        QTest::addColumn<QString>("linkTarget"); // as the link holds it
        QTest::addColumn<QString>("realFile");
        QTest::newRow("relative link") << "real.html" << "real.html";
        QTest::newRow("link to another folder") << "sub/real.html" << "sub/real.html";
        QTest::newRow("link to a link") << "second-link" << "real.html";
    }
    void saveGoesThroughSymlinks()
    {
        QFETCH(QString, linkTarget);
        QFETCH(QString, realFile);
        QVERIFY(QDir(temp->path()).mkpath("sub"));
        QVERIFY(writeFile(path(realFile), "old"));
        QVERIFY(setMode(path(realFile), 0640));
        QVERIFY(QFile::link("real.html", path("second-link")));
        const QString link = path("link.html");
        QCOMPARE(::symlink(QFile::encodeName(linkTarget).constData(), QFile::encodeName(link).constData()), 0);

        QVERIFY(saveTextFile(link, "new", FileFormat{}).ok());
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(QFile::symLinkTarget(link), QFileInfo(path(linkTarget)).absoluteFilePath());
        QCOMPARE(fileBytes(path(realFile)), QByteArray("new"));
        QCOMPARE(modeOf(path(realFile)), 0640u);
    }

    // Root may write anything; the owner's write bit is what makes a file read-only here.
    void failedSaveKeepsTheOldFile_data()
    {
        QTest::addColumn<QString>("situation");
        QTest::addColumn<ErrorCode>("error");
        QTest::addColumn<SaveFailure>("failure");
        QTest::addColumn<QString>("message"); // %1 the path, %2 its folder
        const QString readOnly = QStringLiteral("The file %1 is read-only.");
        const ErrorCode denied = ErrorCode::PermissionDenied;
        QTest::newRow("read-only file") << "0444" << denied << SaveFailure::ReadOnlyFile << readOnly;
        QTest::newRow("others may write, the owner not")
            << "0466" << denied << SaveFailure::ReadOnlyFile << readOnly;
        QTest::newRow("read-only folder") << "folder" << denied << SaveFailure::ReadOnlyFolder
                                          << "The folder %2 can't be written to.";
        QTest::newRow("full disk") << "full disk" << ErrorCode::PathFileAccess << SaveFailure::DiskFull
                                   << "The disk is full.";
        QTest::newRow("character outside 1252")
            << "1252" << ErrorCode::PathFileAccess << SaveFailure::Unencodable
            << "The text holds a character that Windows-1252 can't store (U+0080 on line 2). "
               "Save it as UTF-8 to keep it.";
    }
    void failedSaveKeepsTheOldFile()
    {
        QFETCH(QString, situation);
        QFETCH(ErrorCode, error);
        QFETCH(SaveFailure, failure);
        QFETCH(QString, message);
        const QString folder = path("sub");
        const QString file = folder + "/page.html";
        QVERIFY(QDir(temp->path()).mkpath("sub"));
        QVERIFY(writeFile(file, "old"));
        if (situation.startsWith('0'))
            QVERIFY(setMode(file, situation.toUInt(nullptr, 8)));
        if (situation == "folder")
            QVERIFY(setMode(folder, 0555));
        const uint mode = modeOf(file);
        const QDateTime modified = QFileInfo(file).lastModified();
        FileFormat format;
        if (situation == "1252")
            format.encoding = TextEncoding::Windows1252;
        // U+0080 is not the euro's byte.
        const QString text = QString::fromUtf16(u"\u20AC\r\n\u0080") + QString(8192, u'x');

        std::optional<FileSizeLimit> limit;
        if (situation == "full disk")
            limit.emplace(4096);
        const SaveResult result = saveTextFile(file, text, format);
        limit.reset();
        setMode(folder, 0755);
        QCOMPARE(result.error, error);
        QCOMPARE(result.failure, failure);
        QCOMPARE(result.message, filled(message, file, folder));
        QCOMPARE(fileBytes(file), QByteArray("old"));
        QCOMPARE(modeOf(file), mode);
        QCOMPARE(QFileInfo(file).lastModified(), modified);
        QCOMPARE(entries(folder), QStringList{"page.html"}); // no temporary file left behind
    }

    void targetThatCantBeAFile_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<SaveFailure>("failure");
        QTest::addColumn<QString>("message");
        QTest::newRow("vanished folder") << "gone/page.html" << SaveFailure::FolderMissing
                                         << "The folder %2 doesn't exist.";
        QTest::newRow("folder under a file") << "file/page.html" << SaveFailure::FolderMissing
                                             << "The folder %2 doesn't exist.";
        QTest::newRow("a folder") << "sub" << SaveFailure::NotAFile << "%1 is not a file.";
    }
    void targetThatCantBeAFile()
    {
        QFETCH(QString, name);
        QFETCH(SaveFailure, failure);
        QFETCH(QString, message);
        QVERIFY(QDir(temp->path()).mkpath("sub"));
        QVERIFY(writeFile(path("file"), "x"));
        const SaveResult result = saveTextFile(path(name), "new", FileFormat{});
        QCOMPARE(result.error, ErrorCode::PathFileAccess);
        QCOMPARE(result.failure, failure);
        QCOMPARE(result.message, filled(message, path(name), QFileInfo(path(name)).absolutePath()));
        QVERIFY(QFileInfo(path("sub")).isDir());
        QCOMPARE(fileBytes(path("file")), QByteArray("x"));
    }

    // A document's save that fails leaves its file locked as it was.
    void failedDocumentSaveKeepsTheLock()
    {
        const QString file = path("page.html");
        QVERIFY(writeFile(file, "old"));
        FileHandles handles;
        QCOMPARE(handles.hold(1, file, true), ErrorCode::None);
        QVERIFY(setMode(temp->path(), 0555));
        const SaveResult result = saveDocumentFile(handles, 1, file, "new", FileFormat{});
        QVERIFY(setMode(temp->path(), 0700));
        QCOMPARE(result.failure, SaveFailure::ReadOnlyFolder);
        QCOMPARE(fileBytes(file), QByteArray("old"));
        QVERIFY(handles.isLocked(1));
        QByteArray bytes;
        QCOMPARE(readWholeFile(file, bytes, FileShare::Shared), ErrorCode::PermissionDenied);
    }
};

PW_TEST_MAIN(TestTextFile)
#include "tst_text_file.moc"
