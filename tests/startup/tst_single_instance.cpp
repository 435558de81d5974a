#include "isolated_main.h"

#include "platform/single_instance.h"

#include <QFileInfo>
#include <QLocalSocket>
#include <QProcess>
#include <QSignalSpy>

#include <memory>
#include <sys/stat.h>
#include <unistd.h>

using namespace pw;

// The link between two starts, with the second start a real child process.
class TestSingleInstance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        dir = std::make_unique<QTemporaryDir>();
        QVERIFY(dir->isValid());
        name = dir->path() + QStringLiteral("/link");
        received.clear();
    }

    void cleanup()
    {
        for (QProcess *peer : std::as_const(peers)) {
            peer->kill();
            peer->waitForFinished();
            delete peer;
        }
        peers.clear();
    }

    void handOverReachesTheRunningCopy_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("path with blanks") << "open /tmp/My Pages/an index page.html" << true;
        QTest::newRow("path in other scripts") << QStringLiteral("open /tmp/Ünïcødé 日本語/страница ✓.html") << true;
        QTest::newRow("path with a line feed") << "open /tmp/two\nlines.html" << true;
        QTest::newRow("jump") << "jump" << true;
        QTest::newRow("unknown command is refused") << "print /tmp/x.html" << false;
    }
    void handOverReachesTheRunningCopy()
    {
        QFETCH(QString, command);
        QFETCH(bool, accepted);
        LinkServer server;
        listen(server);
        QSignalSpy executed(&server, &LinkServer::commandExecuted);
        send(command);
        QCOMPARE(peerAnswer, QByteArray(accepted ? "accepted" : "refused"));
        QCOMPARE(received, QStringList{command});
        QCOMPARE(executed.size(), 1);
        QCOMPARE(executed[0][1].toBool(), accepted);
    }

    // With no server, a second start learns so at once, and a new server can take the name.
    void noServerIsReportedAtOnceAndANewOneListens_data()
    {
        QTest::addColumn<bool>("staleSocket");
        QTest::newRow("no socket file") << false;
        QTest::newRow("socket of a killed server") << true;
    }
    void noServerIsReportedAtOnceAndANewOneListens()
    {
        QFETCH(bool, staleSocket);
        if (staleSocket)
            leaveStaleSocket();
        if (QTest::currentTestFailed())
            return;
        send(QStringLiteral("jump"));
        QCOMPARE(peerAnswer, QByteArray("not running"));

        LinkServer server;
        listen(server);
        send(QStringLiteral("jump"));
        QCOMPARE(peerAnswer, QByteArray("accepted"));
        QCOMPARE(received, QStringList{"jump"});
    }

    void liveServerKeepsItsName()
    {
        QProcess *first = startPeer({QStringLiteral("serve"), name});
        QVERIFY(first->waitForReadyRead());
        QCOMPARE(first->readLine().trimmed(), QByteArray("listening"));

        LinkServer second;
        QCOMPARE(second.listen(name), LinkServer::ListenResult::AlreadyRunning);
        QVERIFY(!second.isListening());
        // The probe left the first server working.
        QCOMPARE(SendLinkCommand(QStringLiteral("jump"), name), LinkAnswer::Accepted);
        QByteArray got;
        QTRY_VERIFY((got += first->readAllStandardOutput()).contains("got jump"));
    }

    void connectionThatHangsUpIsDropped()
    {
        LinkServer server;
        listen(server);
        {
            QLocalSocket half;
            half.connectToServer(name);
            QVERIFY(half.waitForConnected());
            half.write("open /tmp/cut sh");
            half.flush();
        }
        send(QStringLiteral("open /tmp/whole.html"));
        QCOMPARE(peerAnswer, QByteArray("accepted"));
        QCOMPARE(received, QStringList{"open /tmp/whole.html"});
    }

    void simultaneousStartsMakeOneServer()
    {
        const int starts = 4;
        for (int i = 0; i < starts; ++i)
            startPeer({QStringLiteral("start"), name, QStringLiteral("open /tmp/page %1.html").arg(i)});
        QProcess *server = nullptr;
        QStringList handedOver;
        for (QProcess *peer : std::as_const(peers)) {
            QTRY_VERIFY(peer->canReadLine() || peer->state() == QProcess::NotRunning);
            const QByteArray first = peer->readLine().trimmed();
            if (first == "first") {
                QVERIFY2(!server, "two starts became servers");
                server = peer;
            } else {
                QCOMPARE(first, QByteArray("accepted"));
                QTRY_COMPARE(peer->state(), QProcess::NotRunning);
                QCOMPARE(peer->exitCode(), 0);
                handedOver << peer->arguments().last();
            }
        }
        QVERIFY(server);
        QCOMPARE(handedOver.size(), starts - 1);
        QByteArray got;
        QTRY_COMPARE((got += server->readAllStandardOutput()).count("got "), starts - 1);
        for (const QString &command : std::as_const(handedOver))
            QVERIFY2(got.contains("got " + command.toUtf8()), qPrintable(command));
        server->closeWriteChannel();
        QTRY_COMPARE(server->state(), QProcess::NotRunning);
        QCOMPARE(server->exitCode(), 0);
        QVERIFY2(!QFileInfo::exists(name), "a server that ends removes its socket");
    }

    void linkNameIsInAFolderOfTheUserAlone()
    {
        const QString link = LinkName();
        QVERIFY(link.endsWith(QStringLiteral("/pagewright-") + QString::number(::geteuid())));
        struct stat folder {};
        QCOMPARE(::stat(QFile::encodeName(QFileInfo(link).path()).constData(), &folder), 0);
        QCOMPARE(folder.st_uid, ::geteuid());
        QCOMPARE(folder.st_mode & 077, 0u);
    }

private:
    QProcess *startPeer(const QStringList &arguments)
    {
        auto *peer = new QProcess;
        peer->setProgram(QStringLiteral(LINK_PEER));
        peer->setArguments(arguments);
        peer->start();
        peers << peer;
        peer->waitForStarted();
        return peer;
    }

    // A second start that sends command and ends, and what it was answered.
    void send(const QString &command)
    {
        QProcess *peer = startPeer({QStringLiteral("send"), name, command});
        QTRY_COMPARE(peer->state(), QProcess::NotRunning);
        peerAnswer = peer->readAllStandardOutput().trimmed();
    }

    // This process as the running copy: it takes "open ..." and "jump" and refuses the rest.
    void listen(LinkServer &server)
    {
        QCOMPARE(server.listen(name), LinkServer::ListenResult::Listening);
        server.setHandler([this](const QString &c, bool *cancel) {
            received << c;
            *cancel = !c.startsWith(QLatin1String("open ")) && c != QLatin1String("jump");
        });
    }

    // A server in a child that is killed outright leaves its socket file behind.
    void leaveStaleSocket()
    {
        QProcess *crashed = startPeer({QStringLiteral("serve"), name});
        QVERIFY(crashed->waitForReadyRead());
        QCOMPARE(crashed->readLine().trimmed(), QByteArray("listening"));
        crashed->kill(); // SIGKILL: no chance to clean up
        QVERIFY(crashed->waitForFinished());
        QVERIFY(QFileInfo::exists(name));
    }

    std::unique_ptr<QTemporaryDir> dir;
    QString name;
    QStringList received;
    QList<QProcess *> peers;
    QByteArray peerAnswer;
};

PW_TEST_MAIN(TestSingleInstance)
#include "tst_single_instance.moc"
