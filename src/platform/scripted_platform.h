#pragma once

#include "platform/platform.h"

#include <QList>
#include <QPointer>
#include <QQueue>

#include <functional>

namespace pw {

// A platform for tests: answers come from scripts, and everything shown is recorded.
class ScriptedPlatform : public Platform
{
public:
    struct Message {
        QString text;
        int style = 0;
        QString title;
    };
    struct PrintedPage {
        QStringList lines;
    };

    // Message boxes: answers are taken from the queue; with it empty, the default button answers.
    QQueue<int> answers;
    QList<Message> messages;
    // Called as each box shows, before its answer is given, to look at the program then.
    std::function<void(const Message &)> onMessage;

    // Common dialogs: each show takes the next script; with none left, the dialog is cancelled.
    using DialogScript = std::function<ErrorCode(CommonDialog::Kind, CommonDialog &)>;
    QQueue<DialogScript> dialogs;
    QList<CommonDialog::Kind> dialogsShown;
    void chooseFile(const QString &fileName, int filterIndex = 0);
    void cancelDialog();

    // Escape: the polls (counted from 1 since the last reset) at which Escape is down.
    QList<int> escapeAtPoll;
    int escapePolls = 0;
    // Called at each poll, before the answer is given, to let a test act mid-pass.
    std::function<void(int poll)> onEscapePoll;

    QDateTime clock = QDateTime(QDate(2026, 11, 23), QTime(14, 5, 9));
    // The steady clock moves on by tickStep at every reading, so in a test every poll a pass may
    // make is due and a progress strip shows at once; 0 stands it still. With realTicks (the
    // benchmarks) it is the real one.
    qint64 tickNow = 0;
    qint64 tickStep = 1000;
    bool realTicks = false;

    QString clipText;
    QByteArray clipFragment;
    // Puts text on the clipboard as another program would, telling the watchers.
    void copyFromElsewhere(const QString &text);

    bool printerAvailable = true;
    QList<PrintedPage> printed; // pages of the last document printed
    int documentsPrinted = 0;

    bool programStarts = true;
    QList<QStringList> programsStarted; // program then its arguments
    // Programs really started (a stand-in browser); whether they start is then real too.
    bool realPrograms = false;

    bool escapePressed() override;
    QDateTime now() override { return clock; }
    qint64 ticks() override;
    QString clipboardText() override { return clipText; }
    QByteArray clipboardFragment() override { return clipFragment; }
    void setClipboard(const QString &text, const QByteArray &fragment) override;
    void watchClipboard(QObject *context, std::function<void()> changed) override;
    bool printerInstalled() override { return printerAvailable; }
    std::unique_ptr<LineSink> openPrinter(const QString &documentName, QString *error) override;
    bool startProgram(const QString &program, const QStringList &arguments) override;

protected:
    int showMessage(const QString &text, int style, const QString &title) override;
    ErrorCode showDialog(CommonDialog::Kind kind, CommonDialog &dialog) override;

private:
    struct Watcher {
        QPointer<QObject> context;
        std::function<void()> changed;
    };
    QList<Watcher> m_clipboardWatchers;
    void clipboardChanged();
};

// Installs a ScriptedPlatform for the lifetime of the guard.
class ScopedScriptedPlatform
{
public:
    ScopedScriptedPlatform() { setPlatform(&scripted); }
    ~ScopedScriptedPlatform() { setPlatform(nullptr); }
    ScopedScriptedPlatform(const ScopedScriptedPlatform &) = delete;
    ScopedScriptedPlatform &operator=(const ScopedScriptedPlatform &) = delete;
    ScriptedPlatform *operator->() { return &scripted; }
    ScriptedPlatform scripted;
};

} // namespace pw
