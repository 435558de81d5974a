#include "platform/qt_platform.h"

#include "platform/printer_sink.h"

#include "platform/dialog_look.h"
#include "platform/message_box.h"

#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QPrinterInfo>
#include <QProcess>
#include <QPushButton>

namespace pw {

// While escapePressed() gives the queue a turn, Escape is recorded and other user input is held
// back and posted again afterwards, so that a long pass is not re-entered by typing and nothing
// typed during it is lost. A box that opened after the pass began takes its input as usual.
class EscapeFilter : public QObject
{
public:
    bool pumping = false;
    QPointer<QWidget> modalAtStart; // the modal window that stood when the pumping began
    bool escape = false;
    struct Held {
        QPointer<QObject> receiver;
        std::unique_ptr<QEvent> event;
    };
    std::vector<Held> held;

    bool boxOpenedSince(QObject *watched) const
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal || modal == modalAtStart || !watched->isWidgetType())
            return false;
        return static_cast<QWidget *>(watched)->window() == modal;
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (pumping && boxOpenedSince(watched))
            return false;
        switch (event->type()) {
        case QEvent::KeyPress:
            if (static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
                escape = true;
                if (pumping)
                    return true;
                break;
            }
            [[fallthrough]];
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
            if (pumping && watched->isWidgetType()) {
                if (event->type() != QEvent::ShortcutOverride)
                    held.push_back({watched, std::unique_ptr<QEvent>(event->clone())});
                return true;
            }
            break;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
            if (pumping && watched->isWidgetType())
                return true;
            break;
        default:
            break;
        }
        return false;
    }

    void repost()
    {
        for (Held &h : held)
            if (h.receiver)
                QCoreApplication::postEvent(h.receiver, h.event.release());
        held.clear();
    }
};

QtPlatform::QtPlatform() : m_escape(std::make_unique<EscapeFilter>())
{
    if (qApp)
        qApp->installEventFilter(m_escape.get());
    m_sincePump.start();
}

QtPlatform::~QtPlatform()
{
    if (qApp)
        qApp->removeEventFilter(m_escape.get());
}

int QtPlatform::showMessage(const QString &text, int style, const QString &title)
{
    QMessageBox box(QApplication::activeWindow());
    SetDialogLook(box);
    box.setWindowTitle(title);
    box.setText(text);
    switch (MsgStyle::iconOf(style)) {
    case MsgStyle::Critical: box.setIcon(QMessageBox::Critical); break;
    case MsgStyle::Question: box.setIcon(QMessageBox::Question); break;
    case MsgStyle::Exclamation: box.setIcon(QMessageBox::Warning); break;
    case MsgStyle::Information: box.setIcon(QMessageBox::Information); break;
    default: break;
    }
    const int count = buttonCount(style);
    QList<QAbstractButton *> buttons;
    for (int i = 0; i < count; ++i) {
        QMessageBox::StandardButton sb = QMessageBox::Ok;
        switch (buttonAnswer(style, i)) {
        case MsgAnswer::OK: sb = QMessageBox::Ok; break;
        case MsgAnswer::Cancel: sb = QMessageBox::Cancel; break;
        case MsgAnswer::Abort: sb = QMessageBox::Abort; break;
        case MsgAnswer::Retry: sb = QMessageBox::Retry; break;
        case MsgAnswer::Ignore: sb = QMessageBox::Ignore; break;
        case MsgAnswer::Yes: sb = QMessageBox::Yes; break;
        case MsgAnswer::No: sb = QMessageBox::No; break;
        }
        buttons.append(box.addButton(sb));
    }
    const int def = MsgStyle::defaultButtonOf(style);
    if (def < buttons.size())
        box.setDefaultButton(qobject_cast<QPushButton *>(buttons[def]));
    box.exec();
    const int pressed = int(buttons.indexOf(box.clickedButton()));
    if (pressed < 0) // closed by Escape or the close box
        return buttonAnswer(style, count - 1);
    return buttonAnswer(style, pressed);
}

static QString qtFilter(const CommonDialog &dialog, QStringList *all)
{
    *all = CommonDialog::nameFilters(dialog.Filter);
    return all->value(qBound(0, dialog.FilterIndex - 1, int(all->size()) - 1));
}

ErrorCode QtPlatform::showDialog(CommonDialog::Kind kind, CommonDialog &dialog)
{
    QWidget *parent = QApplication::activeWindow();
    switch (kind) {
    case CommonDialog::Kind::Open:
    case CommonDialog::Kind::Save: {
        QStringList filters;
        QString selected = qtFilter(dialog, &filters);
        QString start = dialog.FileName.isEmpty() ? dialog.InitDir : dialog.FileName;
        QString name = kind == CommonDialog::Kind::Open
                           ? QFileDialog::getOpenFileName(parent, dialog.DialogTitle, start,
                                                          filters.join(QLatin1String(";;")), &selected)
                           : QFileDialog::getSaveFileName(parent, dialog.DialogTitle, start,
                                                          filters.join(QLatin1String(";;")), &selected,
                                                          QFileDialog::DontConfirmOverwrite);
        if (name.isEmpty())
            return ErrorCode::Cancel;
        dialog.FileName = name;
        dialog.FileTitle = QFileInfo(name).fileName();
        if (qsizetype i = filters.indexOf(selected); i >= 0)
            dialog.FilterIndex = int(i) + 1;
        return ErrorCode::None;
    }
    case CommonDialog::Kind::Color: {
        const int c = dialog.Color;
        QColor initial(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF);
        QColor chosen = QColorDialog::getColor(initial, parent, dialog.DialogTitle);
        if (!chosen.isValid())
            return ErrorCode::Cancel;
        dialog.Color = chosen.red() | (chosen.green() << 8) | (chosen.blue() << 16);
        return ErrorCode::None;
    }
    case CommonDialog::Kind::Font: {
        QFont initial(dialog.FontName, dialog.FontSize);
        initial.setBold(dialog.FontBold);
        initial.setItalic(dialog.FontItalic);
        bool ok = false;
        QFont chosen = QFontDialog::getFont(&ok, initial, parent, dialog.DialogTitle);
        if (!ok)
            return ErrorCode::Cancel;
        dialog.FontName = chosen.family();
        dialog.FontSize = chosen.pointSize();
        dialog.FontBold = chosen.bold();
        dialog.FontItalic = chosen.italic();
        return ErrorCode::None;
    }
    case CommonDialog::Kind::Help:
        return QFileInfo::exists(dialog.HelpFile) ? ErrorCode::None : ErrorCode::FileNotFound;
    }
    return ErrorCode::None;
}

bool QtPlatform::escapePressed()
{
    // Pumping costs far more than a poll; a pass polls often, so give the queue a turn at most
    // every 30 ms.
    if (m_sincePump.elapsed() >= 30) {
        m_escape->pumping = true;
        m_escape->modalAtStart = QApplication::activeModalWidget();
        QCoreApplication::processEvents();
        m_escape->pumping = false;
        m_escape->repost();
        m_sincePump.restart();
    }
    return std::exchange(m_escape->escape, false);
}

qint64 QtPlatform::ticks()
{
    return coarseTicks();
}

QDateTime QtPlatform::now()
{
    return QDateTime::currentDateTime();
}

QString QtPlatform::fragmentMimeType()
{
    return QStringLiteral("application/x-pagewright-fragment");
}

QString QtPlatform::clipboardText()
{
    return QGuiApplication::clipboard()->text();
}

QByteArray QtPlatform::clipboardFragment()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    return data ? data->data(fragmentMimeType()) : QByteArray();
}

void QtPlatform::setClipboard(const QString &text, const QByteArray &fragment)
{
    auto *data = new QMimeData;
    data->setText(text);
    if (!fragment.isEmpty())
        data->setData(fragmentMimeType(), fragment);
    QGuiApplication::clipboard()->setMimeData(data);
}

void QtPlatform::watchClipboard(QObject *context, std::function<void()> changed)
{
    QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, context, std::move(changed));
}

bool QtPlatform::printerInstalled()
{
    return !QPrinterInfo::defaultPrinter().isNull();
}

std::unique_ptr<LineSink> QtPlatform::openPrinter(const QString &documentName, QString *error)
{
    if (!printerInstalled()) {
        if (error)
            *error = NoPrinterText();
        return nullptr;
    }
    return openDefaultPrinter(documentName, error);
}

bool QtPlatform::startProgram(const QString &program, const QStringList &arguments)
{
    if (program.isEmpty())
        return false;
    return QProcess::startDetached(program, arguments);
}

} // namespace pw
