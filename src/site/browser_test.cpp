#include "site/browser_test.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/error_log.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "files/save_document.h"
#include "platform/file_handles.h"
#include "platform/message_box.h"
#include "platform/platform.h"
#include "platform/processes.h"

#include <QApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QLineEdit>
#include <QMdiArea>
#include <QPointer>
#include <QTimer>

#include <functional>

namespace pw {

namespace {

// Failure numbers of the test.
constexpr int BrowserMissing = 53;
constexpr int NoAnswer = 282;

// One run of the test: its log, its failure flag and how a failure is told.
class BrowserRun
{
public:
    explicit BrowserRun(Workspace &workspace) : m_ws(workspace) {}

    QString log;
    bool failed = false;

    void say(const QString &text, const QString &logged)
    {
        m_ws.status.SetStatusText(text);
        log += logged + LineEnd;
    }
    void fail(int number)
    {
        failed = true;
        const QString text = number == BrowserMissing ? QStringLiteral("Could not find selected browser.")
                                                      : QStringLiteral("Browser not responding.");
        say(text, text);
    }
    // Any other failure: its description and number in the status, the description alone in the log.
    void failOther(const QString &description, int number)
    {
        failed = true;
        m_ws.status.SetStatusText(description + QLatin1Char(' ') + QString::number(number));
        log += description;
    }

    // Waits until done() or the time is up, painting but taking no input; no busy loop.
    void wait(qint64 milliseconds, const std::function<bool()> &done = {})
    {
        const qint64 start = m_ws.platform.ticks();
        const auto over = [&] { return (done && done()) || m_ws.platform.ticks() - start > milliseconds; };
        if (over())
            return;
        QEventLoop loop;
        QTimer timer;
        timer.setInterval(50);
        QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
            if (over())
                loop.quit();
        });
        timer.start();
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }

private:
    Workspace &m_ws;
};

// The document window is in front again: the user came back from the browser.
bool documentInFront(frmDoc &document)
{
    QMdiArea *area = document.mdiArea();
    return area && QApplication::activeWindow() == area->window() && area->activeSubWindow() == &document;
}

} // namespace

QString BrowserDisplayName(const QString &path)
{
    QString name = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    if (dot >= 0)
        name.truncate(dot);
    if (!name.isEmpty())
        name[0] = name[0].toUpper();
    return name;
}

void SelectBrowser(Workspace &workspace)
{
    CommonDialog &dialog = workspace.CMDialog1;
    dialog.Flags = 4;
    dialog.DefaultExt = QString();
    dialog.Filter = QStringLiteral("All (*)|*");
    dialog.FilterIndex = 1;
    dialog.InitDir = QStringLiteral("/usr/bin");
    dialog.DialogTitle = QStringLiteral("Select Browser");
    dialog.FileName = QString();
    if (dialog.ShowOpen() == ErrorCode::Cancel)
        return;
    workspace.history.Browser = dialog.FileName;
}

void TestInBrowser(Workspace &ws, QWidget *logParent)
{
    const QString browserPath = ws.history.Browser;
    if (browserPath.isEmpty()) {
        ws.MsgBox(QStringLiteral("No browser selected!"), MsgStyle::Exclamation);
        SelectBrowser(ws);
        return;
    }
    frmDoc *document = ws.AnyDocumentOpen() ? ws.current() : nullptr;
    if (!document)
        return;
    const QString browserName = BrowserDisplayName(browserPath);
    if (document->Caption().contains(QLatin1String("Untitled:"), Qt::CaseInsensitive)) {
        ws.MsgBox(QStringLiteral("Can not test unsaved file!"), MsgStyle::Exclamation);
        ws.status.ClearStatusText();
        return;
    }
    IdleQueue::Busy busy(ws.platform.idle());
    BrowserRun run(ws);
    if (document->state().Dirty()) {
        run.say(QStringLiteral("Saving changes..."), QStringLiteral("Saving changes."));
        SaveDocument(ws, *document);
    }

    // The browser reads the file while the document lets it go.
    FileHandles &handles = FileHandles::instance();
    const int slot = document->slot();
    const bool lockFiles = ws.options.isChecked(Option::LockFiles);
    if (lockFiles)
        handles.unlock(slot);
    handles.close(slot);

    const QString attempt = QStringLiteral("Attempting link to ") + browserName + QStringLiteral("...");
    run.say(attempt, attempt);
    const QString file = document->Caption();
    document->Text1->setText(QLatin1Char('"') + file + QLatin1Char('"'));
    // No link service here: a running browser is one whose program a process of this user runs.
    if (!ProgramRunning(browserPath))
        run.fail(NoAnswer);

    ws.status.ShowWaitCursor();
    if (run.failed) {
        run.failed = false;
        run.say(QStringLiteral("Spawning ") + browserName + QStringLiteral("..."),
                QStringLiteral("Spawning ") + browserName + QLatin1Char('.'));
        if (!ws.platform.startProgram(browserPath, {file}))
            run.fail(BrowserMissing);
        if (!run.failed)
            run.say(browserName + QStringLiteral(" responded to spawn."), browserName + QStringLiteral(" responded to spawn."));
        run.wait(2000);
    } else {
        // Started again with the file, a running browser opens it in its own window.
        if (!ws.platform.startProgram(browserPath, {file}))
            run.fail(BrowserMissing);
        if (!run.failed)
            run.say(browserName + QStringLiteral(" responded to link."), browserName + QStringLiteral(" responded to link."));
    }
    QPointer<frmDoc> guarded(document);
    run.wait(10000, [&guarded] { return !guarded || documentInFront(*guarded); });
    ws.status.HideWaitCursor();

    if (guarded) {
        const ErrorCode retaken = handles.hold(slot, file, lockFiles);
        if (retaken != ErrorCode::None)
            run.failOther(QStringLiteral("Could not take back ") + file + QStringLiteral(": ") + errorText(retaken),
                          int(retaken));
    }
    if (run.failed) {
        ErrorLogText() = run.log;
        ShowErrorLog(ws, logParent);
    }
}

} // namespace pw
