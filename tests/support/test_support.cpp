#include "test_support.h"

#include "core/font_class.h"
#include "files/new_document.h"

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStandardPaths>
#include <QTest>

TestProgram::TestProgram()
{
    QStandardPaths::setTestModeEnabled(true);
    pw::ResetFontClasses();
    // Distinct classes, so tests can tell them apart.
    pw::TextFont.Color = 0x000000;
    pw::HtmlFont.Color = 0x800000;
    pw::CommentFont.Color = 0x008000;
    pw::CommentFont.Italic = true;
    main().resize(900, 700);
    main().show();
}

TestProgram::~TestProgram()
{
    platform->answers.clear();
    for (QMdiSubWindow *w : main().mdiArea->subWindowList())
        static_cast<pw::frmDoc *>(w)->unloadQuietly();
}

void ProgramTest::startProgram()
{
    program = new TestProgram;
    main().options().setChecked(pw::Option::AddTemplate, false);
}

void ProgramTest::endProgram()
{
    delete program;
    program = nullptr;
    QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
}

pw::frmDoc *TestProgram::newDocument()
{
    return pw::NewDocument();
}

bool TestProgram::trigger(pw::frmDoc *document, const QString &item)
{
    QAction *action = document ? document->item(item) : main().findChild<QAction *>(item);
    if (!action || !action->isEnabled())
        return false;
    action->trigger();
    return true;
}

QStringList TestProgram::captions()
{
    QStringList out;
    for (int slot : main().slots().openSlots())
        out << main().slots().document(slot)->Caption();
    return out;
}

QString fontClasses(pw::EditingSurface &surface)
{
    QString out;
    const QString text = surface.Text();
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] == QLatin1Char('\r') || text[i] == QLatin1Char('\n')) {
            out += QLatin1Char('/');
            continue;
        }
        const pw::FontClass f = surface.fontAt(i);
        out += f == pw::HtmlFont ? QLatin1Char('h') : f == pw::CommentFont ? QLatin1Char('c')
             : f == pw::TextFont ? QLatin1Char('t') : QLatin1Char('?');
    }
    return out;
}
