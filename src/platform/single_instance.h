#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

class QLocalServer;
class QLocalSocket;

namespace pw {

// The hand-over link between a second start and the copy already running for the same user.
// A connection carries one command and one answer, each as UTF-8 ended by a NUL byte: a file name
// may hold a line feed, never a NUL.

// What the sender of a command learns.
enum class LinkAnswer {
    Accepted,   // the running copy took the command
    Refused,    // the running copy refused it (an unknown command)
    NotRunning, // nobody listens: this start is the first
    NoAnswer,   // somebody listens but gave no answer in time, or hung up without one
};

// The link's address for this user: a socket in the user's runtime folder, which only the user may
// enter. Empty when the platform gives no such folder.
QString LinkName();

// The client end: sends command ("open " + path, or "jump") and waits up to answerTimeoutMs for the
// answer. With nobody listening it returns NotRunning at once, without waiting.
LinkAnswer SendLinkCommand(const QString &command, const QString &name = LinkName(), int answerTimeoutMs = 30000);

// The server end, owned by the running copy. Each command is handed to the handler on the thread of
// the event loop, as MDIForm_LinkExecute takes it: the handler sets *cancel to refuse it. Without a
// handler every command is refused.
class LinkServer : public QObject
{
    Q_OBJECT

public:
    enum class ListenResult {
        Listening,      // this process is the server now
        AlreadyRunning, // another live server holds the name; this process is not a server
        Failed,         // the name could not be taken (see errorString()); not a server either
    };
    using Handler = std::function<void(const QString &command, bool *cancel)>;

    explicit LinkServer(QObject *parent = nullptr);
    ~LinkServer() override;

    // Takes the name. A socket left by a run that crashed is removed when nobody answers on it.
    // Starts that race for the name are serialised, so exactly one of them listens.
    ListenResult listen(const QString &name = LinkName());
    void close();
    bool isListening() const;
    QString serverName() const;
    QString errorString() const { return m_error; }

    void setHandler(Handler handler) { m_handler = std::move(handler); }

Q_SIGNALS:
    // After each command has run and been answered.
    void commandExecuted(const QString &command, bool accepted);

private:
    void onNewConnection();
    void onReadyRead(QLocalSocket *socket);
    void execute(QLocalSocket *socket, const QByteArray &raw);

    QLocalServer *m_server = nullptr;
    Handler m_handler;
    QString m_error;
};

// The start's one call: hands command to the copy already running for this user, or, when there is
// none, makes server listen so that this process is the running copy. Returns NotRunning when this
// process is to go on as the first one (server listens, unless the name could not be had at all),
// otherwise the running copy's answer. Two starts at the same moment: one listens, the other hands its
// command to it.
LinkAnswer HandOverOrListen(LinkServer &server, const QString &command, const QString &name = LinkName());

} // namespace pw
