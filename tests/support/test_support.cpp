#include "test_support.h"

#include "files/new_document.h"

#include <QApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTest>

TestProgram::TestProgram()
{
    pw::ClassFonts &fonts = ws().fonts;
    fonts.text.Color = 0x000000;
    fonts.html.Color = 0x000080;
    fonts.comment.Color = 0x008000;
    fonts.comment.Italic = true;
    main().resize(900, 700);
    main().show();
}

TestProgram::~TestProgram()
{
    platform.answers.clear();
    for (QMdiSubWindow *w : main().mdiArea->subWindowList())
        static_cast<pw::frmDoc *>(w)->unloadQuietly();
}

void ProgramTest::startProgram()
{
    program = new TestProgram;
    ws().options.setChecked(pw::Option::AddTemplate, false);
}

void ProgramTest::endProgram()
{
    delete program;
    program = nullptr;
    QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
}

pw::frmDoc *TestProgram::newDocument()
{
    return pw::NewDocument(ws());
}

bool TestProgram::trigger(pw::frmDoc *document, const QString &item)
{
    QAction *action = nullptr;
    if (document)
        action = document->item(item);
    else
        for (QMenu *menu : main().mainMenus())
            if ((action = menu->findChild<QAction *>(item)))
                break;
    if (!action || !action->isEnabled())
        return false;
    action->trigger();
    return true;
}

QStringList TestProgram::captions()
{
    QStringList out;
    for (int slot : ws().slots.openSlots())
        out << ws().slots.document(slot)->Caption();
    return out;
}

QString fontClasses(pw::EditingSurface &surface)
{
    const pw::ClassFonts &fonts = surface.classFonts();
    QString out;
    const QString text = surface.Text();
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] == QLatin1Char('\r') || text[i] == QLatin1Char('\n')) {
            out += QLatin1Char('/');
            continue;
        }
        const pw::FontClass f = surface.fontAt(i);
        out += f == fonts.html ? QLatin1Char('h') : f == fonts.comment ? QLatin1Char('c')
             : f == fonts.text ? QLatin1Char('t') : QLatin1Char('?');
    }
    return out;
}

QString passLeftovers(pw::frmMDIMain &main)
{
    QStringList left;
    if (!main.Panel1->text().isEmpty())
        left << QStringLiteral("status text \"%1\"").arg(main.Panel1->text());
    if (QApplication::overrideCursor())
        left << QStringLiteral("wait cursor");
    if (main.Picture1->isVisible())
        left << QStringLiteral("progress strip");
    return left.join(QStringLiteral(", "));
}
