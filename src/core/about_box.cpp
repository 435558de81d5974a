#include "core/about_box.h"

#include "core/app_state.h"
#include "core/status_line.h"
#include "core/workspace.h"
#include "platform/dialog_look.h"
#include "platform/platform.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace pw {

frmTitle2::frmTitle2(Workspace &workspace, QWidget *parent) : QDialog(parent), m_workspace(workspace)
{
    SetDialogLook(*this);
    setObjectName(QStringLiteral("frmTitle2"));
    setWindowTitle(QStringLiteral("About Pagewright"));

    Image1 = new QLabel(this);
    Image1->setObjectName(QStringLiteral("Image1"));
    Image1->setPixmap(QIcon(QStringLiteral(":/icons/pagewright.svg")).pixmap(64, 64));
    Image1->setAlignment(Qt::AlignTop);

    Label1 = new QLabel(QStringLiteral("Tessaline Pagewright ") + VersionText(), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    QFont big = Label1->font();
    big.setBold(true);
    big.setPointSizeF(big.pointSizeF() * 1.3);
    Label1->setFont(big);

    Label3 = new QLabel(QStringLiteral("Web site: "), this);
    Label3->setObjectName(QStringLiteral("Label3"));
    Label6 = new QLabel(QLatin1String(HomePageAddress), this);
    Label6->setObjectName(QStringLiteral("Label6"));
    Label6->setCursor(Qt::PointingHandCursor);
    QFont link = Label6->font();
    link.setUnderline(true);
    Label6->setFont(link);
    Label6->setStyleSheet(QStringLiteral("color: palette(link);"));
    Label6->installEventFilter(this);

    Command1 = new QPushButton(QStringLiteral("OK"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setDefault(true);
    connect(Command1, &QPushButton::clicked, this, &frmTitle2::Command1_Click);

    auto *site = new QHBoxLayout;
    site->addWidget(Label3);
    site->addWidget(Label6);
    site->addStretch();
    auto *text = new QVBoxLayout;
    text->addWidget(Label1);
    text->addLayout(site);
    text->addStretch();
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command1);
    auto *grid = new QGridLayout(this);
    grid->addWidget(Image1, 0, 0);
    grid->addLayout(text, 0, 1);
    grid->addLayout(buttons, 1, 0, 1, 2);
    grid->setSizeConstraint(QLayout::SetFixedSize);
}

void frmTitle2::Label6_Click()
{
    // Without a chosen browser there is nothing to start; the box just stays.
    const QString browser = m_workspace.history.Browser;
    if (browser.isEmpty())
        return;
    m_workspace.platform.startProgram(browser, {QLatin1String(HomePageAddress)});
}

void frmTitle2::Command1_Click()
{
    close();
}

bool frmTitle2::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == Label6 && event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton &&
        Label6->rect().contains(static_cast<QMouseEvent *>(event)->position().toPoint())) {
        Label6_Click();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

frmTitle2 *ShowAboutBox(Workspace &workspace, QWidget *parent)
{
    QPointer<frmTitle2> box = parent ? parent->findChild<frmTitle2 *>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
    if (!box) {
        box = new frmTitle2(workspace, parent);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->setWindowModality(Qt::ApplicationModal);
        box->adjustSize();
        CenterForm(box);
    }
    box->show();
    box->raise();
    box->activateWindow();
    return box;
}

} // namespace pw
