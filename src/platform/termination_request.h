#pragma once

#include <functional>

class QObject;

namespace pw {

// Turns SIGTERM, SIGINT and SIGHUP into a call of handler on the user-interface thread, so that
// a session that ends or a plain `kill` closes the program the way its close box does: settings
// written, autosaved files removed. A second signal while the first is handled ends the process
// at once. Set up once per process; handler lives as long as context.
void onTerminationRequest(QObject *context, std::function<void()> handler);

} // namespace pw
