#include "markup/live_colouring.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/status_line.h"
#include "markup/highlighter.h"

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QPixmap>

namespace pw {

namespace {

constexpr int KeyTab = 9;
constexpr int KeyEscape = 27;
constexpr int KeyBang = 33;
constexpr int KeyLess = 60;
constexpr int KeyGreater = 62;

// The two window icons that flip at each hundredth character. They live as long as the main
// window, so their pixmaps never outlast the application.
class ChangeIcons : public QObject
{
public:
    explicit ChangeIcons(QObject *parent) : QObject(parent)
    {
        setObjectName(QStringLiteral("changeIcons"));
    }
    QIcon hundred = square(QColor(0x2e, 0x7d, 0x32));
    QIcon other = square(QColor(0x15, 0x65, 0xc0));

    static ChangeIcons &of(frmMDIMain &main)
    {
        auto *icons = main.findChild<ChangeIcons *>(QStringLiteral("changeIcons"), Qt::FindDirectChildrenOnly);
        return icons ? *icons : *new ChangeIcons(&main);
    }

private:
    static QIcon square(const QColor &color)
    {
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::transparent);
        QPainter p(&pixmap);
        p.fillRect(2, 2, 12, 12, color);
        return QIcon(pixmap);
    }
};

// VB's Val: leading blanks skipped, digits up to the first other character.
int leadingNumber(const QString &text)
{
    int value = 0;
    for (QChar c : text) {
        if (c == QLatin1Char(' '))
            continue;
        if (!c.isDigit())
            break;
        value = value * 10 + c.digitValue();
    }
    return value;
}

QString lineTextAt(EditingSurface &text, int position)
{
    return LineText(text.GetLineFromChar(position) + 1);
}

} // namespace

void text_KeyPress(frmDoc &document, int *keyAscii)
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main)
        return;
    EditingSurface &text = *document.Text;
    int &memory = main->slots().ActivationSelStart;
    const bool highlightOn = HighlightOn();

    if (text.SelLength() >= 1 && *keyAscii != KeyEscape)
        text.setSelText(QString());
    if (*keyAscii == KeyTab) {
        text.setSelText(QStringLiteral("    "));
        *keyAscii = 0;
        return;
    }
    if (*keyAscii == KeyBang && document.LastKeyAscii == KeyLess && highlightOn) {
        // Opening a comment: the "<" in front turns comment, and what follows takes its font.
        const int caret = text.SelStart();
        if (caret > 0) {
            text.formatRange(caret - 1, 1, CommentFont);
            ApplyCommentFont(text);
        }
        document.LastKeyAscii = qint16(*keyAscii);
        memory = caret;
        return;
    }
    document.LastKeyAscii = qint16(*keyAscii);
    if (*keyAscii == KeyLess && highlightOn) {
        ApplyClassFont(text, true);
        memory = text.SelStart();
        return;
    }

    const int caret = text.SelStart();
    // Plain typing finds the caret one behind or ahead of the memory; anything else is a jump,
    // after which the caret's context decides the font.
    if (memory - 1 != caret && memory + 1 != caret && caret != 0 && highlightOn) {
        memory = caret;
        const int afterClose = text.upToStop(caret, QStringLiteral(">"), false);
        const int afterOpen = text.upToStop(caret, QStringLiteral("<"), false);
        if (caret - afterClose < caret - afterOpen) {
            ApplyClassFont(text, false);
        } else {
            const int hit = text.Find(QStringLiteral("<!-"), afterClose, caret, EditingSurface::NoHighlight);
            if (hit + 1 == afterOpen)
                ApplyCommentFont(text);
            else
                ApplyClassFont(text, true);
        }
    }
    // After ">" the memory is put out of reach, so the next key always runs the context test.
    memory = *keyAscii == KeyGreater ? text.TextLength() + 100 : text.SelStart();
}

void Text_Change(frmDoc &document)
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main)
        return;
    EditingSurface &text = *document.Text;
    const int length = text.TextLength();
    if (const int slot = document.slot(); slot >= 1 && slot <= main->slots().count())
        main->slots().state(slot).Dirty = True;
    main->setButtonEnabled(QStringLiteral("imgFileSave"), true);
    main->Panel3->setText(SizeText(length));
    main->Panel2->setText(lineTextAt(text, text.SelStart() + 1));
    if (!main->Panel1->text().isEmpty())
        main->Panel1->clear();
    main->setButtonEnabled(QStringLiteral("imgUndo"), text.CanUndo());

    ChangeIcons &icons = ChangeIcons::of(*main);
    if (document.windowIcon().cacheKey() == icons.hundred.cacheKey())
        document.setWindowIcon(icons.other);
    if (length % 100 == 0 && length > 99)
        document.setWindowIcon(icons.hundred);
}

void Text_KeyDown(frmDoc &document)
{
    frmMDIMain *main = frmMDIMain::instance();
    EditingSurface &text = *document.Text;
    if (!main || text.SelStart() == 0)
        return;
    const int shown = leadingNumber(main->Panel2->text().mid(6));
    if (shown != text.GetLineFromChar(text.SelStart()) + 1)
        main->Panel2->setText(lineTextAt(text, text.SelStart() + 1));
}

void Text_SelChange(frmDoc &document)
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main)
        return;
    const bool selected = document.Text->SelLength() >= 1;
    main->setButtonEnabled(QStringLiteral("imgEditCut"), selected);
    main->setButtonEnabled(QStringLiteral("imgEditCopy"), selected);
    // The line panel follows every caret move of the document in front (a click, the template's
    // caret), not only changes and keys; a pass moving another document's caret leaves it alone.
    if (main->activeDocument() == &document)
        main->Panel2->setText(lineTextAt(*document.Text, document.Text->SelStart() + 1));
}

void Text_MouseUp(frmDoc &document, int button, int, int x, int y)
{
    if (button != 2)
        return;
    if (QMenu *edit = document.menu(QStringLiteral("mnuEdit"))) {
        const QPoint at(twipsToPixels(x), twipsToPixels(y));
        edit->popup(document.Text->viewport()->mapToGlobal(at));
    }
}

void Text_GotFocus(frmDoc &)
{
    frmMDIMain *main = frmMDIMain::instance();
    if (main && main->options().isChecked(Option::Toolbar) && main->markupToolsHidden())
        main->SetMarkupToolsHidden(false);
}

} // namespace pw
