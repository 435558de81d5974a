#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

class QLabel;
class QProgressBar;
class QStatusBar;
class QWidget;

namespace pw {

class DocumentState;
class EditingSurface;

// The only writer of the status bar's panels and of the progress strip under the documents.
// Panel 1 holds messages; panels 2 and 3 show the line of the caret and the length of the document
// in front, following its caret and changes, and read "Line: 0 " and "Size: 0" with none; panel 4
// shows the encoding of its file, and nothing with none.
class StatusPresenter : public QObject
{
    Q_OBJECT

public:
    StatusPresenter(QStatusBar &bar, QLabel &message, QLabel &line, QLabel &size, QLabel &encoding,
                    QWidget &strip, QProgressBar &progress, QObject *parent = nullptr);

    // One blank and the text in the message panel, painted at once so it shows during a long pass.
    void SetStatusText(const QString &text);
    // The same for a pass that polls: painted at its first poll after 150 ms, as the strip appears,
    // so a quick pass spends nothing on painting a text no one would see.
    void SetPassStatusText(const QString &text);
    void ClearStatusText();
    QString StatusText() const;

    // The document in front, or none. Its first change clears the message, as every change does.
    void follow(EditingSurface *surface);
    // The file of the document in front, or none.
    void followFormat(const DocumentState *state);

    // The progress strip: shown at 0, set after each unit of work, hidden at the end. It appears
    // only once its pass has run 150 ms, and repaints for a new value at most every 50 ms (a
    // repaint costs far more than a pass's unit of work). pollProgress lets it appear between steps.
    void showProgress();
    void setProgress(int value);
    void pollProgress() { setProgress(m_progressValue); }
    bool progressShown() const { return m_progressShown; }
    void hideProgress();
    // The steady clock in milliseconds that paces the strip (the platform's).
    void setClock(std::function<qint64()> clock) { m_clock = std::move(clock); }

    // The hourglass everywhere and back; not counted, so the one who set it resets it.
    void ShowWaitCursor();
    void HideWaitCursor();

private:
    void showLine();
    void showSize();
    void onChange();

    QStatusBar &m_bar;
    QLabel &m_message;
    QLabel &m_line;
    QLabel &m_size;
    QLabel &m_encoding;
    QMetaObject::Connection m_formatConnection;
    QWidget &m_strip;
    QProgressBar &m_progress;
    QPointer<EditingSurface> m_surface;
    QList<QMetaObject::Connection> m_connections;
    bool m_waiting = false;
    std::function<qint64()> m_clock;
    qint64 m_progressStart = 0;
    qint64 m_progressPainted = 0;
    int m_progressValue = 0;
    bool m_progressWanted = false;
    bool m_progressShown = false;
    qint64 m_messageStart = 0;
    bool m_messageWaiting = false; // a pass's text not painted yet
};

} // namespace pw
