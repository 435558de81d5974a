#include "platform/termination_request.h"

#include <QObject>
#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace pw {

namespace {

int g_pipe[2] = {-1, -1};
volatile std::sig_atomic_t g_pending = 0;

void onSignal(int signal)
{
    // The program did not get round to the first request: leave at once, as without a handler.
    if (g_pending)
        _exit(128 + signal);
    g_pending = 1;
    const char byte = char(signal);
    [[maybe_unused]] const ssize_t written = ::write(g_pipe[0], &byte, 1);
}

} // namespace

void onTerminationRequest(QObject *context, std::function<void()> handler)
{
    if (g_pipe[0] >= 0 || ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, g_pipe) != 0)
        return;
    auto *notifier = new QSocketNotifier(g_pipe[1], QSocketNotifier::Read, context);
    QObject::connect(notifier, &QSocketNotifier::activated, context, [handler = std::move(handler)] {
        char byte = 0;
        [[maybe_unused]] const ssize_t read = ::read(g_pipe[1], &byte, 1);
        // The request stands until the program has ended; a second signal meanwhile ends it at once.
        handler();
    });
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaction(signal, &action, nullptr);
}

} // namespace pw
