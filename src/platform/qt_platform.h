#pragma once

#include "platform/platform.h"

#include <QElapsedTimer>

#include <memory>

namespace pw {

class EscapeFilter;

// The real platform: Qt's dialogs, clipboard, printer and processes.
class QtPlatform : public Platform
{
public:
    QtPlatform();
    ~QtPlatform() override;

    bool escapePressed() override;
    QDateTime now() override;
    qint64 ticks() override;
    QString clipboardText() override;
    QByteArray clipboardFragment() override;
    void setClipboard(const QString &text, const QByteArray &fragment) override;
    void watchClipboard(QObject *context, std::function<void()> changed) override;
    bool printerInstalled() override;
    std::unique_ptr<LineSink> openPrinter(const QString &documentName, QString *error) override;
    bool startProgram(const QString &program, const QStringList &arguments) override;

    // The MIME type under which a formatted fragment travels on the clipboard.
    static QString fragmentMimeType();

protected:
    int showMessage(const QString &text, int style, const QString &title) override;
    ErrorCode showDialog(CommonDialog::Kind kind, CommonDialog &dialog) override;

private:
    std::unique_ptr<EscapeFilter> m_escape;
    QElapsedTimer m_sincePump;
};

} // namespace pw
