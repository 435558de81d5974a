#include "core/help_window.h"

#include "core/app_state.h"
#include "core/status_line.h"
#include "core/workspace.h"
#include "platform/message_box.h"
#include "platform/platform.h"

#include <QGuiApplication>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPointer>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBrowser>
#include <QToolButton>
#include <QVBoxLayout>

namespace pw {

namespace {

const QString BuiltInManual = QStringLiteral(":/help/index.html");

QUrl urlOf(const QString &file)
{
    if (file.startsWith(QLatin1String(":/")))
        return QUrl(QStringLiteral("qrc") + file);
    return QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath());
}

QToolButton *button(const QString &name, const QString &text, const QString &themeIcon, QWidget *parent)
{
    auto *b = new QToolButton(parent);
    b->setObjectName(name);
    b->setText(text);
    b->setIcon(QIcon::fromTheme(themeIcon));
    b->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    b->setAutoRaise(true);
    return b;
}

} // namespace

frmHelp::frmHelp(Workspace &workspace, QWidget *parent) : QWidget(parent, Qt::Window), m_workspace(workspace)
{
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(QStringLiteral("Pagewright Help"));

    cmdBack = button(QStringLiteral("cmdBack"), QStringLiteral("&Back"), QStringLiteral("go-previous"), this);
    cmdForward = button(QStringLiteral("cmdForward"), QStringLiteral("&Forward"), QStringLiteral("go-next"), this);
    cmdContents = button(QStringLiteral("cmdContents"), QStringLiteral("&Contents"), QStringLiteral("go-home"), this);
    cmdBack->setEnabled(false);
    cmdForward->setEnabled(false);

    HelpText = new QTextBrowser(this);
    HelpText->setObjectName(QStringLiteral("HelpText"));
    // Links are followed here: pages of the manual in this window, anything else in the user's browser.
    HelpText->setOpenLinks(false);
    HelpText->document()->setDocumentMargin(12);
    connect(HelpText, &QTextBrowser::anchorClicked, this, &frmHelp::onAnchorClicked);
    connect(HelpText, &QTextBrowser::backwardAvailable, cmdBack, &QWidget::setEnabled);
    connect(HelpText, &QTextBrowser::forwardAvailable, cmdForward, &QWidget::setEnabled);
    connect(cmdBack, &QToolButton::clicked, HelpText, &QTextBrowser::backward);
    connect(cmdForward, &QToolButton::clicked, HelpText, &QTextBrowser::forward);
    connect(cmdContents, &QToolButton::clicked, this, [this] { HelpText->setSource(m_home); });

    auto *buttons = new QHBoxLayout;
    buttons->setContentsMargins(4, 2, 4, 2);
    buttons->addWidget(cmdBack);
    buttons->addWidget(cmdForward);
    buttons->addWidget(cmdContents);
    buttons->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(buttons);
    layout->addWidget(HelpText);

    auto *escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(escape, &QShortcut::activated, this, &QWidget::close);

    const QRect screen = (parent ? parent->screen() : QGuiApplication::primaryScreen())->availableGeometry();
    resize(qMin(780, screen.width() * 9 / 10), qMin(720, screen.height() * 9 / 10));
    CenterOver(this, parent);
}

void frmHelp::showManual(const QString &file, const QString &anchor)
{
    m_home = urlOf(file);
    QUrl target = m_home;
    if (!anchor.isEmpty())
        target.setFragment(anchor);
    if (HelpText->source().adjusted(QUrl::RemoveFragment) == m_home && !anchor.isEmpty())
        HelpText->scrollToAnchor(anchor);
    else
        HelpText->setSource(target);
    if (anchor.isEmpty())
        HelpText->verticalScrollBar()->setValue(0);
}

void frmHelp::onAnchorClicked(const QUrl &url)
{
    const QUrl target = HelpText->source().resolved(url);
    const QString scheme = target.scheme();
    if (scheme == QLatin1String("qrc") || scheme == QLatin1String("file")) {
        HelpText->setSource(target);
        return;
    }
    if (const QString browser = m_workspace.history.Browser; !browser.isEmpty())
        m_workspace.platform.startProgram(browser, {target.toString()});
}

QString HelpFilePath()
{
    const QString installed = QDir::cleanPath(QCoreApplication::applicationDirPath()
                                              + QStringLiteral("/../share/pagewright/help/index.html"));
    return QFileInfo::exists(installed) ? installed : BuiltInManual;
}

frmHelp *ShowHelpWindow(Workspace &workspace, QWidget *parent, const QString &file, const QString &anchor)
{
    QPointer<frmHelp> help = parent ? parent->findChild<frmHelp *>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
    if (!help) {
        help = new frmHelp(workspace, parent);
        help->setAttribute(Qt::WA_DeleteOnClose);
    }
    help->showManual(file, anchor);
    if (help->isMinimized())
        help->showNormal();
    help->show();
    help->raise();
    help->activateWindow();
    return help;
}

void HelpContents(Workspace &workspace, QWidget *parent)
{
    CommonDialog &dialog = workspace.CMDialog1;
    dialog.HelpFile = HelpFilePath();
    dialog.HelpCommand = 3; // contents
    if (dialog.ShowHelp() != ErrorCode::None) {
        workspace.MsgBox(QStringLiteral("The help file can't be found: ") + dialog.HelpFile, MsgStyle::Exclamation);
        return;
    }
    ShowHelpWindow(workspace, parent, dialog.HelpFile);
}

} // namespace pw
