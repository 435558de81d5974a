#include "core/title_window.h"

#include "core/app_state.h"
#include "core/status_line.h"

#include <QApplication>
#include <QIcon>
#include <QLineEdit>
#include <QLinearGradient>
#include <QPainter>
#include <QPointer>

namespace pw {

namespace {

constexpr int PictureWidthTwips = 6300;
constexpr int PictureHeightTwips = 3375;
constexpr int VersionXTwips = 100;
constexpr int VersionYTwips = 2950;

const QColor Ink(0x1F, 0x3A, 0x5F);
const QColor Accent(0x1F, 0x5F, 0xA8);
const QColor Muted(0x5A, 0x6B, 0x7D);

QPointer<frmTitle> &theTitle()
{
    static QPointer<frmTitle> title;
    return title;
}

} // namespace

TitlePicture::TitlePicture(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("Picture1"));
    setFixedSize(pictureSize());
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QSize TitlePicture::pictureSize()
{
    return {twipsToPixels(PictureWidthTwips), twipsToPixels(PictureHeightTwips)};
}

QPoint TitlePicture::versionPosition()
{
    return {twipsToPixels(VersionXTwips), twipsToPixels(VersionYTwips)};
}

void TitlePicture::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    const QRect all = rect();
    const int bandTop = versionPosition().y() - 11;

    QLinearGradient paper(0, 0, 0, bandTop);
    paper.setColorAt(0, Qt::white);
    paper.setColorAt(1, QColor(0xEE, 0xF3, 0xFA));
    p.fillRect(QRect(0, 0, all.width(), bandTop), paper);
    p.fillRect(QRect(0, bandTop, all.width(), all.height() - bandTop), Accent);
    p.fillRect(QRect(0, 0, all.width(), 1), Ink);

    // The icon needs the SVG plugin; without it the name alone stands.
    const QRect iconBox(30, 45, 96, 96);
    QIcon(QStringLiteral(":/icons/pagewright.svg")).paint(&p, iconBox);

    QFont name = font();
    name.setPixelSize(38);
    name.setBold(true);
    p.setFont(name);
    p.setPen(Ink);
    const int textLeft = iconBox.right() + 22;
    p.drawText(QRect(textLeft, 58, all.width() - textLeft, 46), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("Pagewright"));

    QFont tagline = font();
    tagline.setPixelSize(14);
    p.setFont(tagline);
    p.setPen(Muted);
    p.drawText(QRect(textLeft + 2, 106, all.width() - textLeft - 2, 20), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("An editor for HTML source"));

    QFont small = font();
    small.setPixelSize(12);
    p.setFont(small);
    p.setPen(QColor(255, 255, 255, 190));
    p.drawText(QRect(0, bandTop, all.width() - 10, all.height() - bandTop), Qt::AlignRight | Qt::AlignVCenter,
               QStringLiteral("Tessaline"));

    if (m_versionPrinted) {
        p.setPen(Qt::white);
        // Printed as text is on a picture box: the position is the top left of the line.
        p.drawText(QRect(versionPosition(), QSize(all.width() / 2, p.fontMetrics().height())),
                   Qt::AlignLeft | Qt::AlignTop, frmTitle::versionCaption());
    }
}

frmTitle::frmTitle(QWidget *parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("frmTitle"));
    setWindowTitle(QStringLiteral("Pagewright"));
    setAutoFillBackground(true);
    QPalette frame = palette();
    frame.setColor(QPalette::Window, Ink);
    setPalette(frame);

    Picture1 = new TitlePicture(this);
    Picture1->move(1, 0);
    Text1 = new QLineEdit(this);
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->hide();

    // Height = picture height + 15, width = picture width + 30, in twips.
    setFixedSize(twipsToPixels(PictureWidthTwips + 30), twipsToPixels(PictureHeightTwips + 15));
}

QString frmTitle::versionCaption()
{
    return QStringLiteral("Version: ") + VersionText();
}

void frmTitle::PrintVersion()
{
    Picture1->setVersionPrinted(true);
    if (Picture1->isVisible())
        Picture1->repaint();
}

frmTitle *ShowTitle()
{
    QPointer<frmTitle> &title = theTitle();
    if (!title)
        title = new frmTitle;
    CenterForm(title);
    title->show();
    title->raise();
    title->PrintVersion();
    return title;
}

frmTitle *TitleWindow()
{
    return theTitle();
}

void PrintTitleVersion()
{
    if (frmTitle *title = theTitle())
        title->PrintVersion();
}

void UnloadTitle()
{
    if (frmTitle *title = theTitle()) {
        title->hide();
        delete title;
    }
}

} // namespace pw
