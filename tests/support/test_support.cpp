#include "test_support.h"

#include "core/app_state.h"
#include "files/new_document.h"
#include "files/open_document.h"

#include <QApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

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
    temp = std::make_unique<QTemporaryDir>();
    QVERIFY(temp->isValid());
    program = new TestProgram;
    ws().options.setChecked(pw::Option::AddTemplate, false);
}

void ProgramTest::endProgram()
{
    delete program;
    program = nullptr;
    temp.reset();
    QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
}

QString ProgramTest::write(const QString &name, const QByteArray &bytes)
{
    return writeFile(path(name), bytes) ? path(name) : QString();
}

pw::frmDoc *ProgramTest::opened(const QString &name, const QByteArray &bytes)
{
    return writeFile(path(name), bytes) ? pw::OpenFromHandOver(ws(), path(name)) : nullptr;
}

void ProgramTest::verifyMessage(const QString &text, int style, int count)
{
    QCOMPARE(platform().messages.size(), count);
    QCOMPARE(platform().messages.last().text, text);
    QCOMPARE(platform().messages.last().style, style);
    QCOMPARE(platform().messages.last().title, pw::AppTitle());
}

pw::frmDoc *TestProgram::newDocument()
{
    return pw::NewDocument(ws());
}

QAction *TestProgram::item(pw::frmDoc *document, const QString &name)
{
    if (document)
        return document->item(name);
    for (QMenu *menu : main().mainMenus())
        if (QAction *action = menu->findChild<QAction *>(name))
            return action;
    return nullptr;
}

bool TestProgram::trigger(pw::frmDoc *document, const QString &name)
{
    QAction *action = item(document, name);
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

QByteArray fileBytes(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<unreadable>");
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
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
