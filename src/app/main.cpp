#include "app/application.h"
#include "core/main_window.h"
#include "core/title_window.h"
#include "files/open_document.h"
#include "platform/platform.h"
#include "platform/single_instance.h"
#include "platform/termination_request.h"

#include <QApplication>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Tessaline"));
    QApplication::setApplicationName(QStringLiteral("Pagewright"));
    // The command line, as it stands, is the path of one file.
    const QString commandLine = QApplication::arguments().mid(1).join(QLatin1Char(' '));

    QApplication::setOverrideCursor(Qt::WaitCursor);
    // A copy already running takes the file (or the focus), and this one ends unseen.
    pw::LinkServer server;
    // The path is made whole here: a relative one means the folder this start was made in.
    const QString command = commandLine.isEmpty() ? QStringLiteral("jump")
                                                  : QStringLiteral("open ") + pw::LongPathOf(commandLine);
    if (pw::HandOverOrListen(server, command) == pw::LinkAnswer::Accepted)
        return 0;

    pw::ShowTitle();
    pw::Application program(pw::platform());
    server.setHandler([&program](const QString &received, bool *cancel) {
        program.MDIForm_LinkExecute(received, cancel);
    });
    QObject::connect(&program.main(), &pw::frmMDIMain::unloaded, &app, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    // A request made while the start runs is kept and carried out once it has ended.
    pw::onTerminationRequest(&program.main(), [&program] { program.requestTermination(); });
    QApplication::restoreOverrideCursor();
    program.MDIForm_Load(commandLine);
    const int status = app.exec();
    server.close();
    return status;
}
