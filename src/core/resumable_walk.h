#pragma once

#include <QObject>

namespace pw {

// A walk through a document that stops for the user: it keeps its place in the object, and the
// dialog's buttons resume it. Between stops the program runs as usual; no event loop is nested.
// The spell checker walks this way, and so do find, replace and the site walk.
class ResumableWalk : public QObject
{
    Q_OBJECT

public:
    enum class Step { WaitForUser, Done };

    explicit ResumableWalk(QObject *parent = nullptr) : QObject(parent) {}

    bool isRunning() const { return m_running; }
    // Standing at a stop, waiting for the user's answer.
    bool isWaiting() const { return m_running && !m_advancing; }

    // From the beginning to the first stop or the end.
    void start();
    // After the user's answer, on to the next stop or the end; ignored unless waiting.
    void resume();
    // Ends the walk where it stands.
    void stop();

Q_SIGNALS:
    void stopped();
    // complete: the walk reached the end; otherwise it was stopped.
    void finished(bool complete);

protected:
    virtual void begin() = 0;
    // Walks on to the next stop or the end.
    virtual Step advance() = 0;

private:
    void run();

    bool m_running = false;
    bool m_advancing = false;
};

} // namespace pw
