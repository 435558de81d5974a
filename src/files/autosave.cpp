#include "files/autosave.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/status_line.h"
#include "files/open_document.h"
#include "platform/message_box.h"
#include "platform/platform.h"

#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStringEncoder>
#include <QTextDocument>
#include <QTimer>

#include <map>

namespace pw {

namespace {

constexpr qint16 TicksPerPass = 10;
// Ticks since the last pass. It keeps its value while the option is off, so the first pass after
// turning it on may come early.
qint16 g_ticks = 0;

// What each slot's file was last written from. A document unchanged since then is not written
// again: its file already holds exactly its text, and a pass over many large documents would
// otherwise stall typing for nothing.
struct Written {
    QPointer<QTextDocument> document;
    bool stale = true;
};
std::map<int, Written> g_written;

bool needsWriting(int slot, QTextDocument *document, const QString &path)
{
    Written &written = g_written[slot];
    if (written.document != document) {
        written.document = document;
        written.stale = true;
        QObject::connect(document, &QTextDocument::contentsChanged, document, [slot, document] {
            if (auto it = g_written.find(slot); it != g_written.end() && it->second.document == document)
                it->second.stale = true;
        });
    }
    return written.stale || !QFileInfo::exists(path);
}

void setTimerRunning(frmMDIMain &main, bool on)
{
    if (!on)
        main.tmrAutoSave->stop();
    else if (!main.tmrAutoSave->isActive())
        main.tmrAutoSave->start();
}

} // namespace

QString AutoSaveFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation)
           + QStringLiteral("/Auto Saved Files");
}

QString AutoSaveFileName(int slot)
{
    return QStringLiteral("AutoSaved.%1").arg(slot, 3, 10, QLatin1Char('0'));
}

void tmrAutoSave_Timer()
{
    if (g_ticks < TicksPerPass)
        ++g_ticks;
    if (g_ticks < TicksPerPass)
        return;
    frmMDIMain *main = frmMDIMain::instance();
    if (!main || !main->options().isChecked(Option::AutoSave))
        return;
    g_ticks = 0;
    AutoSavePass();
}

void AutoSavePass()
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main)
        return;
    const QString folder = AutoSaveFolder();
    QDir().mkpath(folder);
    DocumentSlots &slots = main->slots();
    for (int slot = 1; slot <= slots.count(); ++slot) {
        frmDoc *document = slots.document(slot);
        if (slots.state(slot).Free || !document)
            continue;
        SetStatusText(QStringLiteral("Autosaving ") + document->Caption());
        const QString path = folder + QLatin1Char('/') + AutoSaveFileName(slot);
        if (needsWriting(slot, document->Text->document(), path))
            g_written[slot].stale = !WriteAutoSaveFile(path, *document->Text);
    }
    ClearStatusText();
}

bool WriteAutoSaveFile(const QString &path, const EditingSurface &surface)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    // One copy of the text, encoded a piece at a time into a reused buffer; the document's block
    // separators become CR LF on the way, as Text would give them.
    const QString raw = surface.document()->toRawText();
    const QStringView all(raw);
    constexpr qsizetype PieceChars = 64 * 1024;
    QStringEncoder utf8(QStringEncoder::Utf8);
    QByteArray buffer(utf8.requiredSpace(PieceChars) + 8, Qt::Uninitialized);
    for (qsizetype at = 0; at < all.size(); at += PieceChars) {
        const QStringView piece = all.mid(at, PieceChars);
        char *out = buffer.data();
        qsizetype from = 0;
        for (qsizetype end = piece.indexOf(QChar::ParagraphSeparator); end >= 0;
             end = piece.indexOf(QChar::ParagraphSeparator, from)) {
            out = utf8.appendToBuffer(out, piece.mid(from, end - from));
            *out++ = '\r';
            *out++ = '\n';
            from = end + 1;
        }
        out = utf8.appendToBuffer(out, piece.mid(from));
        if (file.write(buffer.constData(), out - buffer.constData()) < 0)
            return false;
    }
    return file.commit();
}

void ToggleAutoSave()
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main)
        return;
    main->options().toggle(Option::AutoSave);
    setTimerRunning(*main, main->options().isChecked(Option::AutoSave));
}

void BindAutoSaveTimer(frmMDIMain &main)
{
    main.tmrAutoSave->setInterval(1000);
    QObject::connect(main.tmrAutoSave, &QTimer::timeout, &main, [] { tmrAutoSave_Timer(); });
    QObject::connect(&main.options(), &Options::changed, &main, [&main](Option option, bool on) {
        if (option == Option::AutoSave)
            setTimerRunning(main, on);
    });
    setTimerRunning(main, main.options().isChecked(Option::AutoSave));
}

void RecoverAutoSavedFiles()
{
    const QDir folder(AutoSaveFolder());
    const QStringList names =
        folder.entryList({QStringLiteral("AutoSaved.*")}, QDir::Files | QDir::Hidden, QDir::Name);
    if (names.isEmpty())
        return;
    MsgBox(QStringLiteral("Recovering Files!"), MsgStyle::Exclamation, AppTitle());
    for (const QString &name : names) {
        const QString path = folder.filePath(name);
        // A file that could not be read has been reported; it stays for another try.
        if (frmDoc *document = RecoverFile(path)) {
            document->setCaption(QStringLiteral("Untitled: (Recovered File: 1)"));
            QFile::remove(path);
        }
    }
}

void EmptyAutoSaveFolder()
{
    QDir folder(AutoSaveFolder());
    for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden | QDir::System))
        folder.remove(name);
}

} // namespace pw
