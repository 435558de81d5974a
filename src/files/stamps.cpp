#include "files/stamps.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/workspace.h"
#include "files/text_file.h"
#include "markup/tag_placement.h"
#include "platform/file_handles.h"
#include "platform/message_box.h"
#include "platform/platform.h"

#include <QLocale>
#include <QSignalBlocker>

namespace pw {

namespace {

constexpr StampKind kAllKinds[] = {StampKind::LongDate, StampKind::ShortDate, StampKind::LongTime,
                                   StampKind::ShortTime};

const char *markerName(StampKind kind)
{
    switch (kind) {
    case StampKind::LongDate: return "TPWLDATE";
    case StampKind::ShortDate: return "TPWSDATE";
    case StampKind::LongTime: return "TPWLTIME";
    case StampKind::ShortTime: return "TPWSTIME";
    }
    return "";
}

// A time format without its time-zone field ("t") and the blank that set it apart; quoted
// literal text is left alone.
QString withoutTimeZone(const QString &format)
{
    QString out;
    bool quoted = false;
    for (qsizetype i = 0; i < format.size(); ++i) {
        const QChar c = format[i];
        if (c == QLatin1Char('\'')) {
            quoted = !quoted;
            out += c;
            continue;
        }
        if (quoted || c != QLatin1Char('t')) {
            out += c;
            continue;
        }
        while (i + 1 < format.size() && format[i + 1] == QLatin1Char('t'))
            ++i;
        if (!out.isEmpty() && out.back().isSpace()) {
            while (!out.isEmpty() && out.back().isSpace())
                out.chop(1);
        } else {
            while (i + 1 < format.size() && format[i + 1].isSpace())
                ++i;
        }
    }
    return out.trimmed();
}

} // namespace

QString StampStartMarker(StampKind kind)
{
    return QStringLiteral("<!-- %1 -->").arg(QLatin1String(markerName(kind)));
}

QString StampEndMarker(StampKind kind)
{
    return QStringLiteral("<!-- /%1 -->").arg(QLatin1String(markerName(kind)));
}

QString StampValue(StampKind kind, const QDateTime &when)
{
    const QLocale locale;
    switch (kind) {
    case StampKind::LongDate: return locale.toString(when.date(), QLocale::LongFormat);
    case StampKind::ShortDate: return locale.toString(when.date(), QLocale::ShortFormat);
    case StampKind::LongTime:
        return locale.toString(when.time(), withoutTimeZone(locale.timeFormat(QLocale::LongFormat)));
    case StampKind::ShortTime:
        return locale.toString(when.time(), withoutTimeZone(locale.timeFormat(QLocale::ShortFormat)));
    }
    return {};
}

void PlaceStamp(Workspace &workspace, frmDoc &document, StampKind kind)
{
    EditingSurface &surface = *document.Text;
    if (surface.SelLength() >= 1 && ConfirmSelectionReplace(workspace) != MsgAnswer::Yes)
        return;
    {
        EditingSurface::EditGroup oneStep(surface);
        ApplyCommentFont(surface);
        surface.setSelText(StampStartMarker(kind) + StampEndMarker(kind));
    }
    ApplyClassFont(surface, false);
    surface.SetFocus();
}

void StampDocument(Workspace &workspace, frmDoc &document)
{
    EditingSurface &surface = *document.Text;
    // The window is closing: its change events would reach a document that is already gone.
    const QSignalBlocker quiet(surface);
    const QDateTime now = workspace.platform.now();
    bool changed = false;
    {
        EditingSurface::EditGroup oneStep(surface);
        for (StampKind kind : kAllKinds) {
            const QString start = StampStartMarker(kind);
            const QString end = StampEndMarker(kind);
            const int at = surface.Find(start, 0, -1, 0);
            if (at < 0)
                continue;
            const int endAt = surface.Find(end, at, -1, 0);
            if (endAt < 0) {
                workspace.MsgBox(QStringLiteral("Found ") + start + QStringLiteral(" tag without ") + end
                                     + QStringLiteral(" tag!") + LineEnd + QStringLiteral("Scripting aborted!!"),
                                 MsgStyle::Exclamation);
                if (changed)
                    document.state().setDirty(true);
                return;
            }
            const int from = at + int(start.size());
            surface.setSelStart(from);
            surface.setSelLength(endAt - from);
            surface.setSelText(StampValue(kind, now));
            changed = true;
        }
    }
    if (!changed)
        return;
    const SaveResult saved = saveDocumentFile(FileHandles::instance(), document.slot(), document.state().path(),
                                              surface.Text(), document.state().format());
    document.state().setDirty(!saved.ok());
}

void PasteStamp(Workspace &workspace, frmDoc &document, StampKind kind)
{
    if (!SelectionMayBeReplaced(workspace, document))
        return;
    document.Text->setSelText(StampValue(kind, workspace.platform.now()));
    document.Text->setFocus();
}

void StampOnClose(Workspace &workspace, frmDoc &document)
{
    const DocumentState &state = document.state();
    if (!state.Dirty() && state.Saved() && !state.isUntitled())
        StampDocument(workspace, document);
}

} // namespace pw
