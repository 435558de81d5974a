#include "platform/scripted_platform.h"

#include "platform/message_box.h"
#include "platform/printer_sink.h"

#include <QFileInfo>
#include <QProcess>

namespace pw {

int ScriptedPlatform::showMessage(const QString &text, int style, const QString &title)
{
    messages.append({text, style, title});
    if (onMessage)
        onMessage(messages.last());
    if (!answers.isEmpty())
        return answers.dequeue();
    // A question asked again and again with nothing scripted would hang the test: stop it loudly.
    qsizetype repeats = 0;
    for (qsizetype i = messages.size() - 1; i >= 0 && messages[i].text == text; --i)
        ++repeats;
    if (repeats > 100)
        qFatal("Message box asked over and over without a scripted answer: %s", qPrintable(text));
    return buttonAnswer(style, MsgStyle::defaultButtonOf(style));
}

void ScriptedPlatform::chooseFile(const QString &fileName, int filterIndex)
{
    dialogs.enqueue([fileName, filterIndex](CommonDialog::Kind, CommonDialog &d) {
        d.FileName = fileName;
        d.FileTitle = QFileInfo(fileName).fileName();
        if (filterIndex > 0)
            d.FilterIndex = filterIndex;
        return ErrorCode::None;
    });
}

void ScriptedPlatform::cancelDialog()
{
    dialogs.enqueue([](CommonDialog::Kind, CommonDialog &) { return ErrorCode::Cancel; });
}

ErrorCode ScriptedPlatform::showDialog(CommonDialog::Kind kind, CommonDialog &dialog)
{
    dialogsShown.append(kind);
    if (dialogs.isEmpty())
        return kind == CommonDialog::Kind::Help ? ErrorCode::None : ErrorCode::Cancel;
    return dialogs.dequeue()(kind, dialog);
}

qint64 ScriptedPlatform::ticks()
{
    if (realTicks)
        return coarseTicks(); // as the program reads it
    return tickNow += tickStep;
}

bool ScriptedPlatform::escapePressed()
{
    ++escapePolls;
    if (onEscapePoll)
        onEscapePoll(escapePolls);
    return escapeAtPoll.contains(escapePolls);
}

void ScriptedPlatform::setClipboard(const QString &text, const QByteArray &fragment)
{
    clipText = text;
    clipFragment = fragment;
    clipboardChanged();
}

void ScriptedPlatform::copyFromElsewhere(const QString &text)
{
    setClipboard(text, {});
}

void ScriptedPlatform::watchClipboard(QObject *context, std::function<void()> changed)
{
    m_clipboardWatchers.append({context, std::move(changed)});
}

void ScriptedPlatform::clipboardChanged()
{
    m_clipboardWatchers.removeIf([](const Watcher &w) { return !w.context; });
    const QList<Watcher> watchers = m_clipboardWatchers;
    for (const Watcher &w : watchers)
        if (w.context)
            w.changed();
}

namespace {
class RecordingSink : public LineSink
{
public:
    explicit RecordingSink(ScriptedPlatform *owner) : m_owner(owner)
    {
        m_owner->printed.clear();
        m_owner->printed.append(ScriptedPlatform::PrintedPage{});
    }
    void printLine(const QString &line) override { m_owner->printed.last().lines.append(line); }
    void newPage() override { m_owner->printed.append(ScriptedPlatform::PrintedPage{}); }
    bool endDoc() override
    {
        ++m_owner->documentsPrinted;
        return true;
    }

private:
    ScriptedPlatform *m_owner;
};
} // namespace

std::unique_ptr<LineSink> ScriptedPlatform::openPrinter(const QString &, QString *error)
{
    if (!printerAvailable) {
        if (error)
            *error = NoPrinterText();
        return nullptr;
    }
    return std::make_unique<RecordingSink>(this);
}

bool ScriptedPlatform::startProgram(const QString &program, const QStringList &arguments)
{
    programsStarted.append(QStringList{program} + arguments);
    if (realPrograms)
        return !program.isEmpty() && QProcess::startDetached(program, arguments);
    return programStarts && !program.isEmpty();
}

} // namespace pw
