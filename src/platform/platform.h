#pragma once

#include "platform/common_dialog.h"
#include "platform/error_codes.h"
#include "platform/idle_queue.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace pw {

// The default printer, or a PDF file, as a stream of lines.
class LineSink
{
public:
    virtual ~LineSink() = default;
    virtual void printLine(const QString &line) = 0;
    virtual void newPage() = 0;
    // False when the pages could not all be written out.
    virtual bool endDoc() = 0;
};

// The steady clock of ticks(), in milliseconds: the coarse one, a few nanoseconds to read (a pass
// reads it once a round) with a few milliseconds of grain, finer than any pace it sets.
qint64 coarseTicks();

// Everything that would block a test or reach outside the program. The real implementation is
// QtPlatform; tests install a ScriptedPlatform.
//
// Every box and common dialog marks the program busy while it is open (see idle()) and first runs
// beforeModal, so that nothing top-most (the splash) stands over it.
class Platform
{
public:
    virtual ~Platform() = default;

    // Shows a message box; returns the answer code of the button pressed.
    int msgBox(const QString &text, int style, const QString &title);
    // Shows the common dialog of the given kind; fills dialog's fields and returns None or Cancel.
    ErrorCode showCommonDialog(CommonDialog::Kind kind, CommonDialog &dialog);

    // GetAsyncKeyState(27): true once for each press of Escape since the last call. The real one
    // gives the event queue a turn, holding back other user input until the pass ends.
    virtual bool escapePressed() = 0;

    virtual QDateTime now() = 0;
    // A steady clock in milliseconds, for pacing passes (how often Escape is polled, when the
    // progress strip shows); only differences between two readings mean anything.
    virtual qint64 ticks() = 0;

    // Clipboard: plain text, and optionally a formatted fragment under the program's private type.
    virtual QString clipboardText() = 0;
    virtual QByteArray clipboardFragment() = 0; // empty when the private type is not there
    virtual void setClipboard(const QString &text, const QByteArray &fragment) = 0;
    // Calls changed whenever the clipboard's content changes, for as long as context lives.
    virtual void watchClipboard(QObject *context, std::function<void()> changed) = 0;

    // Whether a default printer is set up at all.
    virtual bool printerInstalled() = 0;
    // Opens the default printer for one document. Null with *error set when there is none.
    virtual std::unique_ptr<LineSink> openPrinter(const QString &documentName, QString *error) = 0;

    // Starts a program detached; false when it could not be started.
    virtual bool startProgram(const QString &program, const QStringList &arguments) = 0;

    // What waits for the program to be idle: passes, boxes and the start mark it busy.
    IdleQueue &idle() { return m_idle; }
    // Runs before any box or dialog shows; the start sets it to put the splash away.
    std::function<void()> beforeModal;

protected:
    virtual int showMessage(const QString &text, int style, const QString &title) = 0;
    virtual ErrorCode showDialog(CommonDialog::Kind kind, CommonDialog &dialog) = 0;

private:
    IdleQueue m_idle;
};

// The platform in use. QtPlatform unless a test installed another.
Platform &platform();
// Installs p (not owned) as the platform; nullptr goes back to the real one.
void setPlatform(Platform *p);

} // namespace pw
