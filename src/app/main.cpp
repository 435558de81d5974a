#include "app/application.h"

#include <QApplication>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Tessaline"));
    QApplication::setApplicationName(QStringLiteral("Pagewright"));
    pw::Application program;
    program.start();
    return app.exec();
}
