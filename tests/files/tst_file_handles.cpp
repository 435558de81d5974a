#include "lock_holder.h"
#include "test_support.h"

#include "files/text_file.h"
#include "platform/file_handles.h"

#include <sys/stat.h>

using namespace pw;

Q_DECLARE_METATYPE(pw::ErrorCode)
Q_DECLARE_METATYPE(pw::FileShare)

static ErrorCode readAs(const QString &path, FileShare share)
{
    QByteArray bytes;
    return readWholeFile(path, bytes, share);
}

class TestFileHandles : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> temp;
    QString page, second; // both written afresh for each test

    QString path(const QString &name) const { return temp->filePath(name); }

private Q_SLOTS:
    void init()
    {
        temp = std::make_unique<QTemporaryDir>();
        QVERIFY(temp->isValid());
        page = path("page.html");
        second = path("second.html");
        QVERIFY(writeFile(page, "<HTML>\r\n</HTML>\r\n") && writeFile(second, "x"));
    }

    void openFailures_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<ErrorCode>("expected");
        QTest::newRow("missing file") << "gone.html" << ErrorCode::FileNotFound;
        QTest::newRow("folder") << "sub" << ErrorCode::PathFileAccess;
        QTest::newRow("path through a file") << "page.html/x.html" << ErrorCode::PathFileAccess;
        QTest::newRow("named pipe") << "pipe" << ErrorCode::PathFileAccess; // at once, not waiting for a writer
        QTest::newRow("empty path") << "" << ErrorCode::PathFileAccess;
    }
    void openFailures()
    {
        QFETCH(QString, name);
        QFETCH(ErrorCode, expected);
        QVERIFY(QDir(temp->path()).mkpath("sub"));
        ::mkfifo(QFile::encodeName(path("pipe")).constData(), 0644);
        const QString target = name.isEmpty() ? name : path(name);
        FileHandles handles;
        QByteArray bytes;
        QCOMPARE(handles.open(1, target, &bytes), expected);
        QVERIFY(!handles.isOpen(1));
        QCOMPARE(readAs(target, FileShare::None), expected);
    }

    // A file is read whole and held by one slot only, in this process and in others.
    void openHoldsTheFile()
    {
        FileHandles handles, other;
        QByteArray bytes;
        QCOMPARE(handles.open(1, page, &bytes), ErrorCode::None);
        QCOMPARE(bytes, QByteArray("<HTML>\r\n</HTML>\r\n"));
        QVERIFY(!handles.isLocked(1));
        QCOMPARE(handles.path(1), page);
        QCOMPARE(handles.open(2, page), ErrorCode::PermissionDenied);
        QCOMPARE(other.open(1, page), ErrorCode::PermissionDenied);
        QCOMPARE(handles.heldSlots(), QList<int>{1});
        // Reopening a slot lets go of its old file.
        QCOMPARE(handles.open(1, second), ErrorCode::None);
        QCOMPARE(other.open(1, page), ErrorCode::None);
        QCOMPARE(other.open(2, second), ErrorCode::PermissionDenied);
        handles.close(1);
        QCOMPARE(handles.path(1), QString());
        QCOMPARE(other.open(2, second), ErrorCode::None);
    }

    void oneOffReads_data()
    {
        QTest::addColumn<bool>("held");
        QTest::addColumn<bool>("locked");
        QTest::addColumn<FileShare>("share");
        QTest::addColumn<ErrorCode>("expected");
        QTest::newRow("free, exclusive") << false << false << FileShare::Exclusive << ErrorCode::None;
        QTest::newRow("held, exclusive") << true << false << FileShare::Exclusive << ErrorCode::PermissionDenied;
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

    void lockAndUnlock()
    {
        FileHandles handles;
        QCOMPARE(handles.lock(1), ErrorCode::PathFileAccess); // nothing held
        QCOMPARE(handles.unlock(1), ErrorCode::PathFileAccess);
        QCOMPARE(handles.open(1, page), ErrorCode::None);
        QCOMPARE(handles.open(4, second), ErrorCode::None);
        QCOMPARE(handles.lock(1), ErrorCode::None);
        QVERIFY(handles.isLocked(1) && !handles.isLocked(4));
        QCOMPARE(readAs(page, FileShare::Shared), ErrorCode::PermissionDenied);
        QCOMPARE(handles.unlock(1), ErrorCode::None);
        QCOMPARE(readAs(page, FileShare::Shared), ErrorCode::None);
        QCOMPARE(readAs(page, FileShare::Exclusive), ErrorCode::PermissionDenied); // unlocked is still held

        // A read-only file is held but can't be locked.
        QVERIFY(QFile::setPermissions(second, QFileDevice::ReadOwner | QFileDevice::ReadGroup));
        QCOMPARE(handles.open(4, second), ErrorCode::None);
        QCOMPARE(handles.lock(4), ErrorCode::PermissionDenied);
        QVERIFY(!handles.isLocked(4));
        QCOMPARE(readAs(second, FileShare::Exclusive), ErrorCode::PermissionDenied);
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
        const QString fresh = path("new.tmp");
        QVERIFY(writeFile(fresh, "new"));
        QCOMPARE(::rename(QFile::encodeName(fresh).constData(), QFile::encodeName(page).constData()), 0);
        QCOMPARE(readAs(page, FileShare::Exclusive), ErrorCode::None);

        QCOMPARE(handles.rebind(1), ErrorCode::None);
        QCOMPARE(handles.isLocked(1), locked);
        QCOMPARE(readAs(page, FileShare::Exclusive), ErrorCode::PermissionDenied);
        QCOMPARE(readAs(page, FileShare::Shared), locked ? ErrorCode::PermissionDenied : ErrorCode::None);
    }

    // A file held in one process can't be opened in another, though it may still be written.
    void heldAcrossProcesses()
    {
        FileHandles handles;
        QCOMPARE(handles.open(1, page), ErrorCode::None);
        QCOMPARE(Holder(page, false).answer(), QByteArray("error 70"));
        handles.close(1);

        Holder holder(page, false);
        QCOMPARE(holder.answer(), QByteArray("locked"));
        QCOMPARE(handles.open(1, page), ErrorCode::PermissionDenied);
        QVERIFY(!handles.isOpen(1));
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

    // A program started while a document is open (the browser test) must not keep its file held
    // after the document has closed.
    void startedProgramsDontInheritHandles()
    {
        FileHandles handles;
        QCOMPARE(handles.open(1, page), ErrorCode::None);
        QProcess child;
        child.start(QStringLiteral("sleep"), {QStringLiteral("30")});
        QVERIFY(child.waitForStarted(10000));
        handles.close(1);
        const ErrorCode afterClose = readAs(page, FileShare::Exclusive);
        child.kill();
        child.waitForFinished(10000);
        QCOMPARE(afterClose, ErrorCode::None);
    }
};

PW_TEST_MAIN(TestFileHandles)
#include "tst_file_handles.moc"
