#include "platform/single_instance.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <unistd.h>

namespace pw {

namespace {

constexpr char Terminator = '\0';
constexpr qint64 MaxCommandBytes = 64 * 1024;
const QByteArray AcceptedAnswer = QByteArrayLiteral("accepted");
const QByteArray RefusedAnswer = QByteArrayLiteral("refused");

// Holds an exclusive flock on NAME.lock while the name is checked and taken, so two starts can't both
// find it free (or both find it stale and remove each other's socket). The kernel lets go of it
// if the process dies.
class NameLock
{
public:
    explicit NameLock(const QString &name)
    {
        m_fd = ::open(QFile::encodeName(name + QStringLiteral(".lock")).constData(),
                      O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (m_fd < 0)
            return;
        // The holder only probes a socket and binds one, which never takes long; don't hang on a
        // lock that something else holds forever.
        const QDeadlineTimer deadline(5000);
        while (::flock(m_fd, LOCK_EX | LOCK_NB) != 0) {
            if (errno != EWOULDBLOCK || deadline.hasExpired()) {
                ::close(m_fd);
                m_fd = -1;
                return;
            }
            QThread::msleep(5);
        }
    }
    ~NameLock()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    NameLock(const NameLock &) = delete;
    NameLock &operator=(const NameLock &) = delete;
    bool held() const { return m_fd >= 0; }

private:
    int m_fd = -1;
};

// Someone accepts connections on name: a live server (a busy one too: the kernel queues the
// connection). A socket file left by a killed process refuses at once.
bool someoneListens(const QString &name)
{
    QLocalSocket probe;
    probe.connectToServer(name);
    const bool live = probe.waitForConnected(1000);
    probe.abort();
    return live;
}

bool fromSameUser(QLocalSocket *socket)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    if (::getsockopt(int(socket->socketDescriptor()), SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0)
        return false;
    return peer.uid == ::geteuid();
}

} // namespace

QString LinkName()
{
    // The runtime folder belongs to the user alone (mode 0700); Qt checks that, or gives none.
    const QString dir = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (dir.isEmpty())
        return {};
    return dir + QStringLiteral("/pagewright-") + QString::number(::geteuid());
}

LinkAnswer SendLinkCommand(const QString &command, const QString &name, int answerTimeoutMs)
{
    if (name.isEmpty())
        return LinkAnswer::NotRunning;
    QLocalSocket socket;
    socket.connectToServer(name);
    if (!socket.waitForConnected(1000))
        return LinkAnswer::NotRunning;

    socket.write(command.toUtf8() + Terminator);
    const QDeadlineTimer deadline(answerTimeoutMs);
    QByteArray answer;
    while (!answer.contains(Terminator)) {
        if (socket.bytesToWrite() > 0)
            socket.waitForBytesWritten(int(qMax<qint64>(0, deadline.remainingTime())));
        if (socket.bytesAvailable() == 0 && !socket.waitForReadyRead(int(qMax<qint64>(0, deadline.remainingTime()))))
            break;
        answer += socket.readAll();
    }
    answer += socket.readAll();
    socket.abort();
    const qsizetype end = answer.indexOf(Terminator);
    if (end < 0)
        return LinkAnswer::NoAnswer;
    answer.truncate(end);
    if (answer == AcceptedAnswer)
        return LinkAnswer::Accepted;
    if (answer == RefusedAnswer)
        return LinkAnswer::Refused;
    return LinkAnswer::NoAnswer;
}

LinkServer::LinkServer(QObject *parent) : QObject(parent), m_server(new QLocalServer(this))
{
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server, &QLocalServer::newConnection, this, &LinkServer::onNewConnection);
}

LinkServer::~LinkServer()
{
    close();
}

LinkServer::ListenResult LinkServer::listen(const QString &name)
{
    m_error.clear();
    if (name.isEmpty()) {
        m_error = QStringLiteral("There is no private runtime folder for the link.");
        return ListenResult::Failed;
    }
    if (m_server->isListening())
        return m_server->fullServerName() == name ? ListenResult::Listening : ListenResult::Failed;

    const NameLock lock(name);
    if (!lock.held()) {
        m_error = QStringLiteral("The link's lock file can't be taken.");
        return ListenResult::Failed;
    }
    // Checked before listening: Qt may put a socket in place by renaming over the old name.
    if (QFileInfo::exists(name) || QFileInfo(name).isSymLink()) {
        if (someoneListens(name))
            return ListenResult::AlreadyRunning;
        QLocalServer::removeServer(name); // left by a run that crashed
    }
    if (m_server->listen(name))
        return ListenResult::Listening;
    m_error = m_server->errorString();
    return ListenResult::Failed;
}

void LinkServer::close()
{
    if (m_server->isListening())
        m_server->close(); // also removes the socket file
}

bool LinkServer::isListening() const
{
    return m_server->isListening();
}

QString LinkServer::serverName() const
{
    return m_server->fullServerName();
}

void LinkServer::onNewConnection()
{
    while (QLocalSocket *socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        // The folder keeps others out already; this also holds where it was made by hand.
        if (!fromSameUser(socket)) {
            socket->abort();
            continue;
        }
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { onReadyRead(socket); });
        onReadyRead(socket);
    }
}

void LinkServer::onReadyRead(QLocalSocket *socket)
{
    const QByteArray pending = socket->peek(socket->bytesAvailable());
    const qsizetype end = pending.indexOf(Terminator);
    if (end < 0) {
        if (pending.size() > MaxCommandBytes)
            socket->abort();
        return;
    }
    disconnect(socket, &QLocalSocket::readyRead, this, nullptr); // one command a connection
    const QByteArray raw = socket->read(end + 1).chopped(1);
    execute(socket, raw);
}

void LinkServer::execute(QLocalSocket *socket, const QByteArray &raw)
{
    const QString command = QString::fromUtf8(raw);
    bool cancel = true;
    if (m_handler) {
        cancel = false;
        // The handler may run an event loop (a message box): the socket or this server may go.
        QPointer<LinkServer> self(this);
        QPointer<QLocalSocket> peer(socket);
        m_handler(command, &cancel);
        if (!self)
            return;
        socket = peer;
    }
    if (socket && socket->state() == QLocalSocket::ConnectedState) {
        socket->write((cancel ? RefusedAnswer : AcceptedAnswer) + Terminator);
        socket->flush();
        socket->disconnectFromServer();
    }
    Q_EMIT commandExecuted(command, !cancel);
}

LinkAnswer HandOverOrListen(LinkServer &server, const QString &command, const QString &name)
{
    // A start that loses the race for the name hands its command to the winner; the winner may
    // itself be gone by then, so try a few times.
    for (int attempt = 0; attempt < 3; ++attempt) {
        const LinkAnswer answer = SendLinkCommand(command, name);
        if (answer != LinkAnswer::NotRunning)
            return answer;
        if (server.listen(name) != LinkServer::ListenResult::AlreadyRunning)
            return LinkAnswer::NotRunning;
    }
    return LinkAnswer::NoAnswer;
}

} // namespace pw
