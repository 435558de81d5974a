#include "files/text_file.h"
#include "platform/file_handles.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <sys/stat.h>

using namespace pw;

Q_DECLARE_METATYPE(pw::ErrorCode)
Q_DECLARE_METATYPE(pw::FileShare)

namespace {

QString writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
        return QString();
    return path;
}

// Another copy of the program holding a file, in a process of its own.
class Holder
{
public:
    Holder(const QString &path, bool lock)
    {
        m_process.start(QStringLiteral(LOCK_HOLDER),
                        lock ? QStringList{path, QStringLiteral("lock")} : QStringList{path});
    }
    ~Holder() { release(); }

    QByteArray answer()
    {
        if (!m_process.waitForStarted(10000))
            return "not started";
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(10000))
                return "no answer";
        }
        return m_process.readLine().trimmed();
    }
    bool release()
    {
        if (m_process.state() == QProcess::NotRunning)
            return true;
        m_process.closeWriteChannel();
        return m_process.waitForFinished(10000);
    }

private:
    QProcess m_process;
};

} // namespace

class TestFileHandles : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> temp;
    QString page;

    QString path(const QString &name) const { return temp->filePath(name); }

private Q_SLOTS:
    void init()
    {
        temp = std::make_unique<QTemporaryDir>();
        QVERIFY(temp->isValid());
        page = writeFile(path("page.html"), "<HTML>\r\n</HTML>\r\n");
        QVERIFY(!page.isEmpty());
    }

    void openReadsTheWholeFileAndHoldsIt()
    {
        FileHandles handles;
        QByteArray bytes;
        QCOMPARE(handles.open(3, page, &bytes), ErrorCode::None);
        QCOMPARE(bytes, QByteArray("<HTML>\r\n</HTML>\r\n"));
        QVERIFY(handles.isOpen(3));
        QVERIFY(!handles.isLocked(3));
        QCOMPARE(handles.path(3), page);
        QCOMPARE(handles.heldSlots(), QList<int>{3});
        handles.close(3);
        QVERIFY(!handles.isOpen(3));
        QCOMPARE(handles.path(3), QString());
    }

    void openFailures_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<ErrorCode>("expected");
        QTest::newRow("missing file") << "gone.html" << ErrorCode::FileNotFound;
        QTest::newRow("folder") << "sub" << ErrorCode::PathFileAccess;
        QTest::newRow("path through a file") << "page.html/x.html" << ErrorCode::PathFileAccess;
        QTest::newRow("named pipe") << "pipe" << ErrorCode::PathFileAccess;
        QTest::newRow("empty path") << "" << ErrorCode::PathFileAccess;
    }
    void openFailures()
    {
        QFETCH(QString, name);
        QFETCH(ErrorCode, expected);
        QVERIFY(QDir(temp->path()).mkpath("sub"));
        ::mkfifo(QFile::encodeName(path("pipe")).constData(), 0644);
        FileHandles handles;
        QByteArray bytes;
        // A pipe must fail at once, not wait for a writer.
        QCOMPARE(handles.open(1, name.isEmpty() ? name : path(name), &bytes), expected);
        QVERIFY(!handles.isOpen(1));
        QByteArray once;
        QCOMPARE(readWholeFile(name.isEmpty() ? name : path(name), once, FileShare::None), expected);
    }

    void secondOpenInThisProcessIsRefused()
    {
        FileHandles handles, other;
        QCOMPARE(handles.open(1, page), ErrorCode::None);
        QCOMPARE(handles.open(2, page), ErrorCode::PermissionDenied);
        QCOMPARE(other.open(1, page), ErrorCode::PermissionDenied);
        QVERIFY(!handles.isOpen(2));
        handles.close(1);
        QCOMPARE(other.open(1, page), ErrorCode::None);
    }

    void reopeningASlotLetsGoOfItsOldFile()
    {
        const QString second = writeFile(path("second.html"), "x");
        FileHandles handles, other;
        QCOMPARE(handles.open(1, page), ErrorCode::None);
        QCOMPARE(handles.open(1, second), ErrorCode::None);
        QCOMPARE(other.open(1, page), ErrorCode::None);
        QCOMPARE(other.open(2, second), ErrorCode::PermissionDenied);
    }

    void oneOffReads_data()
    {
        QTest::addColumn<bool>("held");
        QTest::addColumn<bool>("locked");
        QTest::addColumn<FileShare>("share");
        QTest::addColumn<ErrorCode>("expected");
        QTest::newRow("free, exclusive") << false << false << FileShare::Exclusive << ErrorCode::None;
        QTest::newRow("held, exclusive")
            << true << false << FileShare::Exclusive << ErrorCode::PermissionDenied;
        QTest::newRow("held, shared") << true << false << FileShare::Shared << ErrorCode::None;
        QTest::newRow("locked, shared") << true << true << FileShare::Shared << ErrorCode::PermissionDenied;
        QTest::newRow("locked, no lock asked") << true << true << FileShare::None << ErrorCode::None;
    }
    void oneOffReads()
    {
        QFETCH(bool, held);
        QFETCH(bool, locked);
        QFETCH(FileShare, share);
        QFETCH(ErrorCode, expected);
        FileHandles handles;
        if (held)
            QCOMPARE(handles.hold(1, page, locked), ErrorCode::None);
        QByteArray bytes;
        QCOMPARE(readWholeFile(page, bytes, share), expected);
        QCOMPARE(bytes.isEmpty(), expected != ErrorCode::None);
    }

    void lockAndUnlockOneSlot()
    {
        FileHandles handles;
        QByteArray bytes;
        QCOMPARE(handles.open(1, page), ErrorCode::None);
        QCOMPARE(handles.lock(1), ErrorCode::None);
        QVERIFY(handles.isLocked(1));
        QCOMPARE(readWholeFile(page, bytes, FileShare::Shared), ErrorCode::PermissionDenied);
        QCOMPARE(handles.unlock(1), ErrorCode::None);
        QVERIFY(!handles.isLocked(1));
        QCOMPARE(readWholeFile(page, bytes, FileShare::Shared), ErrorCode::None);
        // Unlocked is still held.
        QCOMPARE(readWholeFile(page, bytes, FileShare::Exclusive), ErrorCode::PermissionDenied);
    }

    void lockingWhatIsNotHeldFails()
    {
        FileHandles handles;
        QCOMPARE(handles.lock(5), ErrorCode::PathFileAccess);
        QCOMPARE(handles.unlock(5), ErrorCode::PathFileAccess);
    }

    void readOnlyFileIsHeldButNotLocked()
    {
        QVERIFY(QFile::setPermissions(page, QFileDevice::ReadOwner | QFileDevice::ReadGroup));
        FileHandles handles;
        QCOMPARE(handles.open(1, page), ErrorCode::None);
        QCOMPARE(handles.lock(1), ErrorCode::PermissionDenied);
        QVERIFY(!handles.isLocked(1));
        QByteArray bytes;
        QCOMPARE(readWholeFile(page, bytes, FileShare::Exclusive), ErrorCode::PermissionDenied);
    }

    void lockAllAndUnlockAll()
    {
        const QString second = writeFile(path("second.html"), "x");
        FileHandles handles;
        QCOMPARE(handles.open(1, page), ErrorCode::None);
        QCOMPARE(handles.open(4, second), ErrorCode::None);
        QCOMPARE(handles.lockAll(true), ErrorCode::None);
        QVERIFY(handles.isLocked(1));
        QVERIFY(handles.isLocked(4));
        QByteArray bytes;
        QCOMPARE(readWholeFile(second, bytes, FileShare::Shared), ErrorCode::PermissionDenied);
        QCOMPARE(handles.lockAll(false), ErrorCode::None);
        QVERIFY(!handles.isLocked(1));
        QVERIFY(!handles.isLocked(4));
        QCOMPARE(readWholeFile(page, bytes, FileShare::Shared), ErrorCode::None);
        QCOMPARE(readWholeFile(second, bytes, FileShare::Shared), ErrorCode::None);
    }

    void rebindHoldsTheFileThatReplacedTheOld_data()
    {
        QTest::addColumn<bool>("locked");
        QTest::newRow("held") << false;
        QTest::newRow("locked") << true;
    }
    void rebindHoldsTheFileThatReplacedTheOld()
    {
        QFETCH(bool, locked);
        FileHandles handles;
        QCOMPARE(handles.hold(1, page, locked), ErrorCode::None);
        // What a save does: a new file renamed over the old one.
        const QString temp = writeFile(path("new.tmp"), "new");
        QVERIFY(::rename(QFile::encodeName(temp).constData(), QFile::encodeName(page).constData()) == 0);
        QByteArray bytes;
        QCOMPARE(readWholeFile(page, bytes, FileShare::Exclusive), ErrorCode::None);

        QCOMPARE(handles.rebind(1), ErrorCode::None);
        QCOMPARE(handles.isLocked(1), locked);
        QCOMPARE(readWholeFile(page, bytes, FileShare::Exclusive), ErrorCode::PermissionDenied);
        QCOMPARE(readWholeFile(page, bytes, FileShare::Shared),
                 locked ? ErrorCode::PermissionDenied : ErrorCode::None);
    }

    void rebindToANewNameLetsGoOfTheOld()
    {
        const QString renamed = writeFile(path("renamed.html"), "x");
        FileHandles handles, other;
        QCOMPARE(handles.open(2, page), ErrorCode::None);
        QCOMPARE(handles.rebind(2, renamed), ErrorCode::None);
        QCOMPARE(handles.path(2), renamed);
        QCOMPARE(other.open(1, page), ErrorCode::None);
        QCOMPARE(other.open(3, renamed), ErrorCode::PermissionDenied);
    }

    void rebindOfTheSameFileKeepsTheLock()
    {
        FileHandles handles;
        QCOMPARE(handles.hold(1, page, true), ErrorCode::None);
        QCOMPARE(handles.rebind(1), ErrorCode::None);
        QVERIFY(handles.isLocked(1));
        QByteArray bytes;
        QCOMPARE(readWholeFile(page, bytes, FileShare::Shared), ErrorCode::PermissionDenied);
    }

    void fileHeldByAnotherProcessIsRefused()
    {
        Holder holder(page, false);
        QCOMPARE(holder.answer(), QByteArray("locked"));
        FileHandles handles;
        QCOMPARE(handles.open(1, page), ErrorCode::PermissionDenied);
        QVERIFY(!handles.isOpen(1));
        // Held only: others may still write it.
        QVERIFY(saveTextFile(page, "changed", FileFormat{}).ok());
        QVERIFY(holder.release());
        QCOMPARE(handles.open(1, page), ErrorCode::None);
    }

    void fileLockedByAnotherProcessCantBeSaved()
    {
        Holder holder(page, true);
        QCOMPARE(holder.answer(), QByteArray("locked"));
        const SaveResult result = saveTextFile(page, "changed", FileFormat{});
        QCOMPARE(result.error, ErrorCode::PermissionDenied);
        QCOMPARE(result.failure, SaveFailure::LockedFile);
        QByteArray bytes;
        QCOMPARE(readWholeFile(page, bytes, FileShare::None), ErrorCode::None);
        QCOMPARE(bytes, QByteArray("<HTML>\r\n</HTML>\r\n"));
        QVERIFY(holder.release());
        QVERIFY(saveTextFile(page, "changed", FileFormat{}).ok());
    }

    void anotherProcessCantOpenWhatWeHold()
    {
        FileHandles handles;
        QCOMPARE(handles.open(1, page), ErrorCode::None);
        Holder holder(page, false);
        QCOMPARE(holder.answer(), QByteArray("error 70"));
    }

    // A program started while a document is open (the browser test) must not keep its file
    // held after the document has closed.
    void startedProgramsDontInheritHandles()
    {
        FileHandles handles;
        QCOMPARE(handles.open(1, page), ErrorCode::None);
        QProcess child;
        child.start(QStringLiteral("sleep"), {QStringLiteral("30")});
        QVERIFY(child.waitForStarted(10000));
        handles.close(1);
        QByteArray bytes;
        const ErrorCode afterClose = readWholeFile(page, bytes, FileShare::Exclusive);
        child.kill();
        child.waitForFinished(10000);
        QCOMPARE(afterClose, ErrorCode::None);
    }
};

QTEST_GUILESS_MAIN(TestFileHandles)
#include "tst_file_handles.moc"
