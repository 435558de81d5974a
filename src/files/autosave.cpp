#include "files/autosave.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "files/open_document.h"
#include "platform/message_box.h"
#include "platform/platform.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStringEncoder>
#include <QTextDocument>
#include <QTimer>

namespace pw {

namespace {
constexpr qint16 TicksPerPass = 10;
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

bool WriteAutoSaveFile(const QString &path, const EditingSurface &surface, QString *error)
{
    QSaveFile file(path);
    const auto failed = [&] {
        if (error)
            *error = file.errorString();
        file.cancelWriting();
        return false;
    };
    if (!file.open(QIODevice::WriteOnly))
        return failed();
    // The text stretch by stretch, encoded a piece at a time into a reused buffer, with CR LF
    // where Text has its line ends.
    constexpr qsizetype PieceChars = 64 * 1024;
    QStringEncoder utf8(QStringEncoder::Utf8);
    QByteArray buffer(utf8.requiredSpace(PieceChars) + 8, Qt::Uninitialized);
    char *out = buffer.data();
    bool written = true;
    const auto flush = [&] {
        written = written && file.write(buffer.constData(), out - buffer.constData()) >= 0;
        out = buffer.data();
    };
    surface.textPieces([&](QStringView stretch, bool lineEnd) {
        for (qsizetype at = 0; at < stretch.size(); at += PieceChars) {
            const QStringView piece = stretch.mid(at, PieceChars);
            if (out - buffer.constData() + utf8.requiredSpace(piece.size()) + 2 > buffer.size())
                flush();
            out = utf8.appendToBuffer(out, piece);
        }
        if (lineEnd) {
            if (out - buffer.constData() + 2 > buffer.size())
                flush();
            *out++ = '\r';
            *out++ = '\n';
        }
    });
    flush();
    if (!written)
        return failed();
    if (file.commit())
        return true;
    if (error)
        *error = file.errorString();
    return false;
}

void EmptyAutoSaveFolder()
{
    QDir folder(AutoSaveFolder());
    for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden | QDir::System))
        folder.remove(name);
}

AutoSave::AutoSave(Workspace &workspace, QTimer &timer) : QObject(&timer), m_workspace(workspace), m_timer(timer)
{
    m_timer.setInterval(1000);
    connect(&m_timer, &QTimer::timeout, this, &AutoSave::tmrAutoSave_Timer);
    connect(&workspace.options, &Options::changed, this, [this](Option option, bool on) {
        if (option == Option::AutoSave)
            setTimerRunning(on);
    });
    connect(&workspace.slots, &DocumentSlots::documentClosed, this, &AutoSave::forget);
}

void AutoSave::start()
{
    m_started = true;
    setTimerRunning(m_workspace.options.isChecked(Option::AutoSave));
}

void AutoSave::setTimerRunning(bool on)
{
    if (!on || !m_started)
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start();
}

void AutoSave::tmrAutoSave_Timer()
{
    IdleQueue &idle = m_workspace.platform.idle();
    if (idle.isBusy()) {
        if (!std::exchange(m_tickWaiting, true))
            idle.runWhenIdle([this] {
                m_tickWaiting = false;
                tmrAutoSave_Timer();
            });
        return;
    }
    // The count keeps its value while the option is off, so the first pass after turning it on
    // may come early.
    if (m_ticks < TicksPerPass)
        ++m_ticks;
    if (m_ticks < TicksPerPass || !m_workspace.options.isChecked(Option::AutoSave))
        return;
    m_ticks = 0;
    AutoSavePass();
}

bool AutoSave::needsWriting(int slot, QTextDocument *document, const QString &path)
{
    Written &written = m_written[slot];
    if (written.document != document) {
        written.document = document;
        written.stale = true;
        connect(document, &QTextDocument::contentsChanged, this, [this, slot, document] {
            if (auto it = m_written.find(slot); it != m_written.end() && it->second.document == document)
                it->second.stale = true;
        });
    }
    return written.stale || !QFileInfo::exists(path);
}

void AutoSave::AutoSavePass()
{
    const QString folder = AutoSaveFolder();
    if (!QDir().mkpath(folder)) {
        tellFailure(QStringLiteral("The folder could not be made."));
        return;
    }
    StatusPresenter &status = m_workspace.status;
    DocumentSlots &slots = m_workspace.slots;
    for (int slot : slots.openSlots()) {
        frmDoc *document = slots.document(slot);
        status.SetStatusText(QStringLiteral("Autosaving ") + document->Caption());
        const QString path = folder + QLatin1Char('/') + AutoSaveFileName(slot);
        if (!needsWriting(slot, document->Text->document(), path))
            continue;
        QString error;
        const bool written = WriteAutoSaveFile(path, *document->Text, &error);
        m_written[slot].stale = !written;
        if (!written)
            tellFailure(error);
    }
    status.ClearStatusText();
}

void AutoSave::tellFailure(const QString &reason)
{
    if (std::exchange(m_failureTold, true))
        return;
    m_workspace.MsgBox(QStringLiteral("Autosave could not write to the folder") + LineEnd + AutoSaveFolder() + LineEnd
                           + reason + LineEnd + QStringLiteral("It will try again every ten seconds."),
                       MsgStyle::Exclamation);
}

void AutoSave::forget(int slot)
{
    // Before the start, the folder holds only what the last run left, which is not this slot's.
    if (!m_started)
        return;
    m_written.erase(slot);
    QFile::remove(AutoSaveFolder() + QLatin1Char('/') + AutoSaveFileName(slot));
}

void AutoSave::ToggleAutoSave()
{
    m_workspace.options.toggle(Option::AutoSave);
}

frmDoc *AutoSave::RecoverAutoSavedFiles()
{
    const QDir folder(AutoSaveFolder());
    const QStringList names =
        folder.entryList({QStringLiteral("AutoSaved.*")}, QDir::Files | QDir::Hidden, QDir::Name);
    if (names.isEmpty())
        return nullptr;
    m_workspace.MsgBox(QStringLiteral("Recovering Files!"), MsgStyle::Exclamation);
    frmDoc *last = nullptr;
    for (const QString &name : names) {
        const QString path = folder.filePath(name);
        // A file that could not be read has been reported; it stays for another try.
        if (frmDoc *document = RecoverFile(m_workspace, path, QStringLiteral("Untitled: (Recovered File: 1)"))) {
            QFile::remove(path);
            last = document;
        }
    }
    return last;
}

} // namespace pw
