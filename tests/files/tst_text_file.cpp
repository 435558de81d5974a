#include "core/editing_surface.h"
#include "files/text_file.h"
#include "platform/file_handles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace pw;

Q_DECLARE_METATYPE(pw::ErrorCode)
Q_DECLARE_METATYPE(pw::TextEncoding)
Q_DECLARE_METATYPE(pw::LineEndStyle)
Q_DECLARE_METATYPE(pw::SaveFailure)

namespace {

constexpr qsizetype MiB = 1 << 20;

QByteArray readBytes(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<unreadable>");
}

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

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

// Every line end CR LF, nothing lone.
bool onlyCrLf(const QString &text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == u'\r' && (i + 1 == text.size() || text.at(i + 1) != u'\n'))
            return false;
        if (text.at(i) == u'\n' && (i == 0 || text.at(i - 1) != u'\r'))
            return false;
    }
    return true;
}

// Writes past a small size fail with EFBIG, as they do on a full disk with ENOSPC.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
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
    struct rlimit m_old = {};
    void (*m_oldHandler)(int) = nullptr;
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
        // A failed test may leave a folder read-only; the temporary dir must still go.
        setMode(temp->path(), 0700);
        setMode(path("sub"), 0700);
        temp.reset();
    }

    // --- Reading and writing back --------------------------------------------------------------

    void unchangedTextRoundTrips_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<TextEncoding>("encoding");
        QTest::addColumn<bool>("bom");
        QTest::addColumn<LineEndStyle>("lineEnd");
        const auto utf8 = TextEncoding::Utf8;
        const auto cp1252 = TextEncoding::Windows1252;
        QByteArray everyByte;
        for (int b = 0; b < 256; ++b) {
            if (b != '\r' && b != '\n')
                everyByte += char(b);
        }
        everyByte += '\n';

        QTest::newRow("LF") << QByteArray("<P>a</P>\n<P>b</P>\n") << utf8 << false << LineEndStyle::Lf;
        QTest::newRow("CR LF") << QByteArray("<P>a</P>\r\n<P>b</P>\r\n") << utf8 << false
                               << LineEndStyle::CrLf;
        QTest::newRow("CR") << QByteArray("<P>a</P>\r<P>b</P>\r") << utf8 << false << LineEndStyle::Cr;
        QTest::newRow("blank lines") << QByteArray("\n\n\n") << utf8 << false << LineEndStyle::Lf;
        QTest::newRow("no line end") << QByteArray("<P>") << utf8 << false << LineEndStyle::CrLf;
        QTest::newRow("empty file") << QByteArray() << utf8 << false << LineEndStyle::CrLf;
        QTest::newRow("UTF-8") << QByteArray("caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80\n") << utf8 << false
                               << LineEndStyle::Lf;
        QTest::newRow("UTF-8 with BOM") << QByteArray("\xEF\xBB\xBF" "caf\xC3\xA9\r\n") << utf8 << true
                                        << LineEndStyle::CrLf;
        QTest::newRow("BOM only") << QByteArray("\xEF\xBB\xBF") << utf8 << true << LineEndStyle::CrLf;
        QTest::newRow("U+FEFF inside") << QByteArray("a\xEF\xBB\xBF") + "b" << utf8 << false
                                       << LineEndStyle::CrLf;
        QTest::newRow("NUL bytes") << QByteArray("a\0b\nc\0", 6) << utf8 << false << LineEndStyle::Lf;
        QTest::newRow("Windows-1252") << QByteArray("caf\xE9 \x80 \x93q\x94\r\n") << cp1252 << false
                                      << LineEndStyle::CrLf;
        QTest::newRow("unassigned 1252 bytes") << QByteArray("\x81\x8D\x8F\x90\x9D\n") << cp1252 << false
                                               << LineEndStyle::Lf;
        QTest::newRow("every byte") << everyByte << cp1252 << false << LineEndStyle::Lf;
        QTest::newRow("truncated UTF-8 at the end") << QByteArray("caf\xC3") << cp1252 << false
                                                    << LineEndStyle::CrLf;
        QTest::newRow("overlong UTF-8") << QByteArray("\xC0\xAF\n") << cp1252 << false << LineEndStyle::Lf;
        QTest::newRow("UTF-8 of a surrogate") << QByteArray("\xED\xA0\x80") << cp1252 << false
                                              << LineEndStyle::CrLf;
        QTest::newRow("BOM then 1252") << QByteArray("\xEF\xBB\xBF" "caf\xE9") << cp1252 << false
                                       << LineEndStyle::CrLf;
    }
    void unchangedTextRoundTrips()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(TextEncoding, encoding);
        QFETCH(bool, bom);
        QFETCH(LineEndStyle, lineEnd);

        const DecodedText decoded = decodeText(bytes);
        QCOMPARE(decoded.format.encoding, encoding);
        QCOMPARE(decoded.format.bom, bom);
        QCOMPARE(decoded.format.lineEnd, lineEnd);
        QVERIFY(!decoded.mixedLineEnds);
        QVERIFY(onlyCrLf(decoded.text));
        QCOMPARE(encodeText(decoded.text, decoded.format), bytes);

        // And through the files, as an open and a save without edits.
        const QString file = path("page.html");
        QVERIFY(writeBytes(file, bytes));
        FileHandles handles;
        const ReadResult read = openDocumentFile(handles, 1, file);
        QCOMPARE(read.error, ErrorCode::None);
        QCOMPARE(read.decoded.text, decoded.text);
        QVERIFY(saveDocumentFile(handles, 1, file, read.decoded.text, read.decoded.format).ok());
        QCOMPARE(readBytes(file), bytes);
    }

    // What the user opens goes into the surface and comes back from it for the save.
    void unchangedTextRoundTripsThroughTheSurface_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QByteArray everyByte;
        for (int b = 0; b < 256; ++b) {
            if (b != '\r')
                everyByte += char(b);
        }
        QTest::newRow("NUL and controls") << QByteArray("a\0b\x01\x1F\x7F\tc\n", 9);
        QTest::newRow("every byte, 1252") << everyByte;
        QTest::newRow("UTF-8 with BOM, LF") << QByteArray("\xEF\xBB\xBF<P>caf\xC3\xA9</P>\n\n");
        QTest::newRow("line separator") << QByteArray("a\xE2\x80\xA8" "b\r\n");
        QTest::newRow("trailing blanks and line") << QByteArray("a  \r\n\r\n");
    }
    void unchangedTextRoundTripsThroughTheSurface()
    {
        QFETCH(QByteArray, bytes);
        const DecodedText decoded = decodeText(bytes);
        EditingSurface surface;
        surface.setText(decoded.text);
        QCOMPARE(encodeText(surface.Text(), decoded.format), bytes);
    }

    void decodedText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("LF becomes CR LF") << QByteArray("a\nb") << QString("a\r\nb");
        QTest::newRow("lone CR becomes CR LF") << QByteArray("a\rb") << QString("a\r\nb");
        QTest::newRow("LF CR is two line ends") << QByteArray("a\n\rb") << QString("a\r\n\r\nb");
        QTest::newRow("1252 euro and quotes")
            << QByteArray("\x80\x93\x94") << QString::fromUtf16(u"\u20AC\u201C\u201D");
        QTest::newRow("1252 unassigned byte") << QByteArray("\x81") << QString::fromUtf16(u"\u0081");
        QTest::newRow("BOM is not text") << QByteArray("\xEF\xBB\xBF" "a") << QString("a");
        QTest::newRow("NUL stays") << QByteArray("a\0b", 3) << QString::fromUtf16(u"a\u0000b", 3);
    }
    void decodedText()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QCOMPARE(decodeText(bytes).text, text);
    }

    void majorityLineEndWins_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<LineEndStyle>("lineEnd");
        QTest::newRow("more LF") << QByteArray("a\nb\nc\r\n") << LineEndStyle::Lf;
        QTest::newRow("more CR LF") << QByteArray("a\r\nb\r\nc\n") << LineEndStyle::CrLf;
        QTest::newRow("more CR") << QByteArray("a\rb\rc\n") << LineEndStyle::Cr;
        QTest::newRow("tie goes to CR LF") << QByteArray("a\nb\r\n") << LineEndStyle::CrLf;
    }
    void majorityLineEndWins()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(LineEndStyle, lineEnd);
        const DecodedText decoded = decodeText(bytes);
        QCOMPARE(decoded.format.lineEnd, lineEnd);
        QVERIFY(decoded.mixedLineEnds);
        // Saved again, the file has that one alone.
        const QByteArray saved = encodeText(decoded.text, decoded.format);
        const QByteArray end = lineEnd == LineEndStyle::CrLf ? "\r\n"
                               : lineEnd == LineEndStyle::Lf ? "\n"
                                                             : "\r";
        QCOMPARE(saved.count(end), decoded.text.count(QLatin1String("\r\n")));
        QVERIFY(!decodeText(saved).mixedLineEnds);
    }

    // Large files are decoded in pieces; what straddles a cut must come out whole.
    void crLfAcrossAChunkCutIsOneLineEnd()
    {
        for (qsizetype at = MiB - 2; at <= MiB + 1; ++at) {
            const QByteArray bytes = QByteArray(at, 'a') + "\r\nb";
            const DecodedText decoded = decodeText(bytes);
            QCOMPARE(decoded.text.size(), bytes.size());
            QVERIFY(!decoded.mixedLineEnds);
            QCOMPARE(decoded.format.lineEnd, LineEndStyle::CrLf);
            QCOMPARE(encodeText(decoded.text, decoded.format), bytes);
        }
    }

    void utf8SequenceAcrossAChunkCut_data()
    {
        QTest::addColumn<QByteArray>("sequence");
        QTest::newRow("two bytes") << QByteArray("\xC3\xA9");
        QTest::newRow("three bytes") << QByteArray("\xE2\x82\xAC");
        QTest::newRow("four bytes") << QByteArray("\xF0\x9F\x98\x80");
    }
    void utf8SequenceAcrossAChunkCut()
    {
        QFETCH(QByteArray, sequence);
        for (qsizetype before = MiB - 4; before <= MiB; ++before) {
            const QByteArray bytes = QByteArray(before, 'a') + sequence + "z";
            const DecodedText decoded = decodeText(bytes);
            QCOMPARE(decoded.format.encoding, TextEncoding::Utf8);
            QCOMPARE(decoded.text.mid(before), QString::fromUtf8(sequence) + "z");
        }
    }

    void lateInvalidByteFallsBackWholly()
    {
        const QByteArray bytes = QByteArray(2 * MiB + 5, 'a') + "\xE9\n" + QByteArray(10, 'b');
        const DecodedText decoded = decodeText(bytes);
        QCOMPARE(decoded.format.encoding, TextEncoding::Windows1252);
        QCOMPARE(decoded.text.size(), bytes.size() + 1);
        QCOMPARE(decoded.text.mid(2 * MiB + 5, 3), QString::fromUtf16(u"\u00E9\r\n"));
        QCOMPARE(encodeText(decoded.text, decoded.format), bytes);
    }

    void progressRunsToTheEnd()
    {
        const QByteArray bytes = QByteArray(3 * MiB + 7, 'a');
        QList<qint64> done;
        const DecodedText decoded = decodeText(bytes, [&](qint64 d, qint64 total) {
            if (total != bytes.size())
                done.append(-1);
            done.append(d);
            return true;
        });
        QVERIFY(!decoded.cancelled);
        QVERIFY(done.size() >= 3);
        QVERIFY(std::is_sorted(done.cbegin(), done.cend()));
        QCOMPARE(done.first() > 0, true);
        QCOMPARE(done.last(), qint64(bytes.size()));
    }

    void cancelledDecodeGivesNoText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("UTF-8") << QByteArray(3 * MiB, 'a');
        QTest::newRow("1252") << QByteArray("\xE9") + QByteArray(3 * MiB, 'a');
    }
    void cancelledDecodeGivesNoText()
    {
        QFETCH(QByteArray, bytes);
        int calls = 0;
        const DecodedText decoded = decodeText(bytes, [&](qint64, qint64) { return ++calls < 2; });
        QVERIFY(decoded.cancelled);
        QVERIFY(decoded.text.isEmpty());
        QCOMPARE(calls, 2);
    }

    void cancelledOpenLetsGoOfTheFile()
    {
        const QString file = path("big.html");
        QVERIFY(writeBytes(file, QByteArray(2 * MiB, 'a')));
        FileHandles handles;
        const ReadResult read = openDocumentFile(handles, 1, file, [](qint64, qint64) { return false; });
        QCOMPARE(read.error, ErrorCode::None);
        QVERIFY(read.decoded.cancelled);
        QVERIFY(!handles.isOpen(1));
    }

    void lineEndsWrittenAsTheFormatSays_data()
    {
        QTest::addColumn<TextEncoding>("encoding");
        QTest::addColumn<LineEndStyle>("lineEnd");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("UTF-8, LF") << TextEncoding::Utf8 << LineEndStyle::Lf << QByteArray("\xC3\xA9\na\n");
        QTest::newRow("UTF-8, CR") << TextEncoding::Utf8 << LineEndStyle::Cr << QByteArray("\xC3\xA9\ra\r");
        QTest::newRow("1252, LF") << TextEncoding::Windows1252 << LineEndStyle::Lf << QByteArray("\xE9\na\n");
        QTest::newRow("1252, CR LF") << TextEncoding::Windows1252 << LineEndStyle::CrLf
                                     << QByteArray("\xE9\r\na\r\n");
    }
    void lineEndsWrittenAsTheFormatSays()
    {
        QFETCH(TextEncoding, encoding);
        QFETCH(LineEndStyle, lineEnd);
        QFETCH(QByteArray, bytes);
        QCOMPARE(encodeText(QString::fromUtf16(u"\u00E9\r\na\r\n"), FileFormat{encoding, false, lineEnd}),
                 bytes);
    }

    void newDocumentsAreUtf8WithCrLf()
    {
        QCOMPARE(encodeText(QString::fromUtf16(u"\u00E9\r\n"), FileFormat{}), QByteArray("\xC3\xA9\r\n"));
    }

    void characterOutside1252IsFound()
    {
        qsizetype at = 0;
        const FileFormat cp1252{TextEncoding::Windows1252, false, LineEndStyle::CrLf};
        QCOMPARE(encodeText(QString::fromUtf16(u"\u20AC\r\n\u2192"), cp1252, &at), QByteArray());
        QCOMPARE(at, qsizetype(3));
        QCOMPARE(encodeText(QString::fromUtf16(u"\u20AC"), cp1252, &at), QByteArray("\x80"));
        QCOMPARE(at, qsizetype(-1));
        // U+0080 is not the euro's byte.
        QCOMPARE(encodeText(QString::fromUtf16(u"\u0080"), cp1252, &at), QByteArray());
    }

    // --- Saving ------------------------------------------------------------------------------------

    void saveKeepsTheMode_data()
    {
        QTest::addColumn<uint>("mode");
        QTest::newRow("owner only") << 0600u;
        QTest::newRow("group reads") << 0640u;
        QTest::newRow("executable") << 0755u;
    }
    void saveKeepsTheMode()
    {
        QFETCH(uint, mode);
        const QString file = path("page.html");
        QVERIFY(writeBytes(file, "old"));
        QVERIFY(setMode(file, mode));
        QVERIFY(saveTextFile(file, "new", FileFormat{}).ok());
        QCOMPARE(readBytes(file), QByteArray("new"));
        QCOMPARE(modeOf(file), mode);
    }

    void newFileTakesTheUmask()
    {
        const mode_t mask = ::umask(022);
        const QString file = path("new.html");
        const SaveResult result = saveTextFile(file, "x", FileFormat{});
        ::umask(mask);
        QVERIFY(result.ok());
        QCOMPARE(modeOf(file), 0644u);
        QCOMPARE(entries(temp->path()), QStringList{"new.html"});
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
        QVERIFY(writeBytes(path(realFile), "old"));
        QVERIFY(setMode(path(realFile), 0640));
        QVERIFY(QFile::link("real.html", path("second-link")));
        const QString link = path("link.html");
        QVERIFY(::symlink(QFile::encodeName(linkTarget).constData(), QFile::encodeName(link).constData()) ==
                0);

        QVERIFY(saveTextFile(link, "new", FileFormat{}).ok());
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(QFile::symLinkTarget(link), QFileInfo(path(linkTarget)).absoluteFilePath());
        QCOMPARE(readBytes(path(realFile)), QByteArray("new"));
        QCOMPARE(modeOf(path(realFile)), 0640u);
    }

    // Root may write anything; the owner's write bit is what makes a file read-only here.
    void readOnlyFileIsNotTouched_data()
    {
        QTest::addColumn<uint>("mode");
        QTest::newRow("no write bit") << 0444u;
        QTest::newRow("others may write, the owner not") << 0466u;
    }
    void readOnlyFileIsNotTouched()
    {
        QFETCH(uint, mode);
        const QString file = path("page.html");
        QVERIFY(writeBytes(file, "old"));
        QVERIFY(setMode(file, mode));
        const QDateTime modified = QFileInfo(file).lastModified();
        const SaveResult result = saveTextFile(file, "new", FileFormat{});
        QCOMPARE(result.error, ErrorCode::PermissionDenied);
        QCOMPARE(result.failure, SaveFailure::ReadOnlyFile);
        QCOMPARE(result.message, QString("The file %1 is read-only.").arg(file));
        QCOMPARE(readBytes(file), QByteArray("old"));
        QCOMPARE(modeOf(file), mode);
        QCOMPARE(QFileInfo(file).lastModified(), modified);
        QVERIFY(isReadOnlyPath(file));
    }

    void failedSaveKeepsTheOldFile_data()
    {
        QTest::addColumn<QString>("situation");
        QTest::addColumn<ErrorCode>("error");
        QTest::addColumn<SaveFailure>("failure");
        QTest::addColumn<QString>("message"); // %1 the path, %2 its folder
        QTest::newRow("read-only folder")
            << "read-only folder" << ErrorCode::PermissionDenied << SaveFailure::ReadOnlyFolder
            << "The folder %2 can't be written to.";
        QTest::newRow("full disk") << "full disk" << ErrorCode::PathFileAccess << SaveFailure::DiskFull
                                   << "The disk is full.";
        QTest::newRow("character outside 1252")
            << "1252" << ErrorCode::PathFileAccess << SaveFailure::Unencodable
            << "The text holds a character that Windows-1252 can't store (U+2192 on line 2). "
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
        QVERIFY(writeBytes(file, "old"));
        FileFormat format;
        if (situation == "1252")
            format.encoding = TextEncoding::Windows1252;
        if (situation == "read-only folder")
            QVERIFY(setMode(folder, 0555));
        const QString text = QString::fromUtf16(u"line\r\n\u2192") + QString(8192, u'x');

        SaveResult result;
        if (situation == "full disk") {
            FileSizeLimit limit(4096);
            result = saveTextFile(file, text, format);
        } else {
            result = saveTextFile(file, text, format);
        }
        setMode(folder, 0755);
        QCOMPARE(result.error, error);
        QCOMPARE(result.failure, failure);
        QCOMPARE(result.message, filled(message, file, folder));
        QCOMPARE(readBytes(file), QByteArray("old"));
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
        QVERIFY(writeBytes(path("file"), "x"));
        const SaveResult result = saveTextFile(path(name), "new", FileFormat{});
        QCOMPARE(result.error, ErrorCode::PathFileAccess);
        QCOMPARE(result.failure, failure);
        QCOMPARE(result.message, filled(message, path(name), QFileInfo(path(name)).absolutePath()));
        QVERIFY(QFileInfo(path("sub")).isDir());
        QCOMPARE(readBytes(path("file")), QByteArray("x"));
    }

    // --- A document's save and its handle -------------------------------------------------------

    void savingALockedDocumentKeepsItLocked()
    {
        const QString file = path("page.html");
        QVERIFY(writeBytes(file, "old"));
        FileHandles handles;
        QCOMPARE(handles.open(1, file), ErrorCode::None);
        QCOMPARE(handles.lock(1), ErrorCode::None);
        QVERIFY(saveDocumentFile(handles, 1, file, "new", FileFormat{}).ok());
        QCOMPARE(readBytes(file), QByteArray("new"));
        QVERIFY(handles.isLocked(1));
        QByteArray bytes;
        // The lock sits on the new file, not on the one the rename replaced.
        QCOMPARE(readWholeFile(file, bytes, FileShare::Shared), ErrorCode::PermissionDenied);
    }

    void failedSaveKeepsTheLock()
    {
        const QString file = path("page.html");
        QVERIFY(writeBytes(file, "old"));
        FileHandles handles;
        QCOMPARE(handles.hold(1, file, true), ErrorCode::None);
        QVERIFY(setMode(temp->path(), 0555));
        const SaveResult result = saveDocumentFile(handles, 1, file, "new", FileFormat{});
        QVERIFY(setMode(temp->path(), 0700));
        QCOMPARE(result.failure, SaveFailure::ReadOnlyFolder);
        QVERIFY(handles.isLocked(1));
        QByteArray bytes;
        QCOMPARE(readWholeFile(file, bytes, FileShare::Shared), ErrorCode::PermissionDenied);
    }

    void firstSaveHoldsTheNewFile_data()
    {
        QTest::addColumn<bool>("lock");
        QTest::newRow("held") << false;
        QTest::newRow("locked") << true;
    }
    void firstSaveHoldsTheNewFile()
    {
        QFETCH(bool, lock);
        const QString file = path("untitled.html");
        FileHandles handles;
        QVERIFY(saveDocumentFile(handles, 2, file, "new", FileFormat{}, lock).ok());
        QCOMPARE(handles.path(2), file);
        QCOMPARE(handles.isLocked(2), lock);
        QByteArray bytes;
        QCOMPARE(readWholeFile(file, bytes, FileShare::Exclusive), ErrorCode::PermissionDenied);
    }

    void saveAsMovesTheHandle()
    {
        const QString file = path("page.html");
        const QString other = path("other.html");
        QVERIFY(writeBytes(file, "old"));
        FileHandles handles;
        QCOMPARE(handles.open(1, file), ErrorCode::None);
        QVERIFY(saveDocumentFile(handles, 1, other, "new", FileFormat{}).ok());
        QCOMPARE(handles.path(1), other);
        QCOMPARE(readBytes(file), QByteArray("old"));
        QByteArray bytes;
        QCOMPARE(readWholeFile(file, bytes, FileShare::Exclusive), ErrorCode::None);
        QCOMPARE(readWholeFile(other, bytes, FileShare::Exclusive), ErrorCode::PermissionDenied);
    }
};

QTEST_MAIN(TestTextFile)
#include "tst_text_file.moc"
