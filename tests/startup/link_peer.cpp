#include "platform/single_instance.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cstdio>
#include <unistd.h>

using namespace pw;

// Another start of the program, as far as the link goes:
//   link_peer send NAME COMMAND   sends COMMAND, prints the answer; exit 0 accepted, 1 refused,
//                                 2 not running, 3 no answer
//   link_peer serve NAME          listens and accepts every command until its input closes
//   link_peer start NAME COMMAND  hands COMMAND over, or listens as the first start until its input
//                                 closes, printing each command it is given
namespace {

void say(const QByteArray &line)
{
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

int answerCode(LinkAnswer answer)
{
    switch (answer) {
    case LinkAnswer::Accepted: say("accepted"); return 0;
    case LinkAnswer::Refused: say("refused"); return 1;
    case LinkAnswer::NotRunning: say("not running"); return 2;
    case LinkAnswer::NoAnswer: say("no answer"); return 3;
    }
    return 4;
}

// Serves until standard input closes.
int serve(LinkServer &server)
{
    server.setHandler([](const QString &command, bool *) { say("got " + command.toUtf8()); });
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &input, [&input] {
        char buffer[256];
        if (::read(STDIN_FILENO, buffer, sizeof buffer) <= 0) {
            input.setEnabled(false);
            QCoreApplication::quit();
        }
    });
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const QString mode = args.value(1);
    const QString name = args.value(2);
    if (mode == QLatin1String("send") && args.size() == 4)
        return answerCode(SendLinkCommand(args[3], name));
    LinkServer server;
    if (mode == QLatin1String("serve") && args.size() == 3) {
        switch (server.listen(name)) {
        case LinkServer::ListenResult::Listening: say("listening"); return serve(server);
        case LinkServer::ListenResult::AlreadyRunning: say("already running"); return 1;
        case LinkServer::ListenResult::Failed: say("failed " + server.errorString().toUtf8()); return 2;
        }
    }
    if (mode == QLatin1String("start") && args.size() == 4) {
        const LinkAnswer answer = HandOverOrListen(server, args[3], name);
        if (answer == LinkAnswer::NotRunning && server.isListening()) {
            say("first");
            return serve(server);
        }
        return answerCode(answer);
    }
    say("usage: link_peer send|serve|start NAME [COMMAND]");
    return 5;
}
