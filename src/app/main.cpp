#include "app/application.h"
#include "core/main_window.h"
#include "core/status_line.h"
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
    pw::Application program;
    QObject::connect(&program.main(), &pw::frmMDIMain::unloaded, &app, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    pw::onTerminationRequest(&program.main(), [&program] { program.main().close(); });
    program.MDIForm_Load(commandLine);
    pw::HideWaitCursor();
    return app.exec();
}
