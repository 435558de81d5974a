#include "markup/font_commands.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/workspace.h"
#include "markup/tag_placement.h"

namespace pw {

namespace {
constexpr int FontDialogFlags = 5; // screen and printer fonts, as the font buttons ask
} // namespace

QString ColorToHtml(qint64 color)
{
    if (color < 0 || color > 0xFFFFFF)
        return QString();
    const auto pair = [](qint64 v) { return QStringLiteral("%1").arg(v & 0xFF, 2, 16, QLatin1Char('0')).toUpper(); };
    return pair(color) + pair(color >> 8) + pair(color >> 16);
}

void PlaceFontSize(Workspace &workspace, frmDoc &document, const QString &size)
{
    PlacePairedTag(workspace, document, QStringLiteral("FONT"), false, QStringLiteral("SIZE=\"%1\"").arg(size));
}

void mnuFontColor_Click(Workspace &workspace, frmDoc &document)
{
    CommonDialog &dialog = workspace.CMDialog1;
    dialog.Flags = 0;
    if (dialog.ShowColor() == ErrorCode::Cancel)
        return;
    PlacePairedTag(workspace, document, QStringLiteral("FONT"), false,
                   QStringLiteral("COLOR=\"#%1\"").arg(ColorToHtml(dialog.Color)));
}

void mnuFontFace_Click(Workspace &workspace, frmDoc &document)
{
    CommonDialog &dialog = workspace.CMDialog1;
    dialog.Flags = FontDialogFlags;
    if (dialog.ShowFont() == ErrorCode::Cancel)
        return;
    PlacePairedTag(workspace, document, QStringLiteral("FONT"), false, QStringLiteral("FACE=\"%1\"").arg(dialog.FontName));
}

void mnuHTMLComment_Click(frmDoc &document)
{
    EditingSurface &text = *document.Text;
    const QString kept = text.SelText();
    {
        EditingSurface::EditGroup oneStep(text);
        ApplyCommentFont(text);
        text.setSelText(QStringLiteral("<!-- ") + kept + QStringLiteral(" -->"));
    }
    if (kept.isEmpty())
        text.setSelStart(text.SelStart() - 4);
    ApplyClassFont(text, false);
    text.setFocus();
}

} // namespace pw
