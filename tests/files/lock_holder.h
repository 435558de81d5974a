#pragma once

#include <QProcess>

// Another copy of the program holding a file (lock_holder, built as LOCK_HOLDER), in a process of
// its own until it is released or goes.
class Holder
{
public:
    Holder(const QString &path, bool lock)
    {
        m_process.start(QStringLiteral(LOCK_HOLDER), lock ? QStringList{path, "lock"} : QStringList{path});
    }
    ~Holder() { release(); }
    // "locked", or "error" and the code of the failure.
    QByteArray answer() { return m_process.waitForReadyRead(10000) ? m_process.readLine().trimmed() : "none"; }
    bool release()
    {
        m_process.closeWriteChannel();
        return m_process.state() == QProcess::NotRunning || m_process.waitForFinished(10000);
    }

private:
    QProcess m_process;
};
