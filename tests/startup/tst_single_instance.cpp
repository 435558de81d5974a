#include "isolated_main.h"

#include "platform/single_instance.h"

#include <QElapsedTimer>
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
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("answer");
        QTest::newRow("path with blanks") << "open /tmp/My Pages/an index page.html" << 0 << "accepted";
        QTest::newRow("path in other scripts")
            << QStringLiteral("open /tmp/Ünïcødé 日本語/страница ✓.html") << 0 << "accepted";
        QTest::newRow("path with a line feed") << "open /tmp/two\nlines.html" << 0 << "accepted";
        QTest::newRow("jump") << "jump" << 0 << "accepted";
        QTest::newRow("unknown command is refused") << "print /tmp/x.html" << 1 << "refused";
    }
    void handOverReachesTheRunningCopy()
    {
        QFETCH(QString, command);
        QFETCH(int, exitCode);
        QFETCH(QString, answer);
        LinkServer server;
        QCOMPARE(server.listen(name), LinkServer::ListenResult::Listening);
        server.setHandler([this](const QString &c, bool *cancel) {
            received << c;
            *cancel = !c.startsWith(QLatin1String("open ")) && c != QLatin1String("jump");
        });
        QSignalSpy executed(&server, &LinkServer::commandExecuted);

        QProcess *peer = startPeer({QStringLiteral("send"), name, command});
        QTRY_COMPARE(peer->state(), QProcess::NotRunning);
        QCOMPARE(peer->exitStatus(), QProcess::NormalExit);
        QCOMPARE(peer->exitCode(), exitCode);
        QCOMPARE(QString::fromUtf8(peer->readAllStandardOutput()).trimmed(), answer);
        QCOMPARE(received, QStringList{command});
        QCOMPARE(executed.size(), 1);
        QCOMPARE(executed[0][1].toBool(), exitCode == 0);
    }

    void noServerIsReportedAtOnce_data()
    {
        QTest::addColumn<bool>("staleSocket");
        QTest::newRow("no socket file") << false;
        QTest::newRow("socket of a killed server") << true;
    }
    void noServerIsReportedAtOnce()
    {
        QFETCH(bool, staleSocket);
        if (staleSocket)
            leaveStaleSocket();
        if (QTest::currentTestFailed())
            return;
        QElapsedTimer clock;
        clock.start();
        QProcess *peer = startPeer({QStringLiteral("send"), name, QStringLiteral("jump")});
        QTRY_COMPARE(peer->state(), QProcess::NotRunning);
        qInfo("a second start learned there was no server in %lld ms", clock.elapsed());
        QCOMPARE(peer->exitCode(), 2);
        QCOMPARE(peer->readAllStandardOutput().trimmed(), QByteArray("not running"));
    }

    void staleSocketDoesNotStopANewServer()
    {
        leaveStaleSocket();
        if (QTest::currentTestFailed())
            return;
        LinkServer server;
        QCOMPARE(server.listen(name), LinkServer::ListenResult::Listening);
        server.setHandler([this](const QString &c, bool *) { received << c; });
        QProcess *peer = startPeer({QStringLiteral("send"), name, QStringLiteral("jump")});
        QTRY_COMPARE(peer->state(), QProcess::NotRunning);
        QCOMPARE(peer->exitCode(), 0);
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
        QCOMPARE(server.listen(name), LinkServer::ListenResult::Listening);
        server.setHandler([this](const QString &c, bool *) { received << c; });
        {
            QLocalSocket half;
            half.connectToServer(name);
            QVERIFY(half.waitForConnected());
            half.write("open /tmp/cut sh");
            half.flush();
        }
        QProcess *peer = startPeer({QStringLiteral("send"), name, QStringLiteral("open /tmp/whole.html")});
        QTRY_COMPARE(peer->state(), QProcess::NotRunning);
        QCOMPARE(peer->exitCode(), 0);
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
        const auto commandsGot = [&] {
            got += server->readAllStandardOutput();
            return got.count("got ");
        };
        QTRY_COMPARE(commandsGot(), starts - 1);
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
        QVERIFY(!link.isEmpty());
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
        if (!peer->waitForStarted())
            qWarning("link_peer did not start: %s", qPrintable(peer->errorString()));
        return peer;
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
};

PW_ISOLATED_TEST_MAIN(TestSingleInstance)
#include "tst_single_instance.moc"
