#include "app/application.h"
#include "core/main_window.h"
#include "core/status_line.h"
#include "core/title_window.h"
#include "files/open_document.h"
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

    pw::ShowWaitCursor();
    // A copy already running takes the file (or the focus), and this one ends unseen.
    pw::LinkServer server;
    // The path is made whole here: a relative one means the folder this start was made in.
    const QString command = commandLine.isEmpty() ? QStringLiteral("jump")
                                                  : QStringLiteral("open ") + pw::LongPathOf(commandLine);
    if (pw::HandOverOrListen(server, command) == pw::LinkAnswer::Accepted)
        return 0;

    pw::ShowTitle();
    pw::Application program;
    server.setHandler([&program](const QString &received, bool *cancel) {
        program.MDIForm_LinkExecute(received, cancel);
    });
    QObject::connect(&program.main(), &pw::frmMDIMain::unloaded, &app, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    pw::onTerminationRequest(&program.main(), [&program] { program.main().close(); });
    // A message box during the load must not stand under the top-most splash.
    program.MDIForm_Load(commandLine, [] {
        if (pw::frmTitle *title = pw::TitleWindow())
            title->hide();
    });
    pw::UnloadTitle();
    pw::HideWaitCursor();
    const int status = app.exec();
    server.close();
    return status;
}
