#include "markup/function_keys.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/options.h"
#include "core/workspace.h"
#include "markup/tag_placement.h"
#include "platform/message_box.h"

#include <QMdiArea>

namespace pw {

namespace {
constexpr int KeyF1 = 0x70, KeyF4 = 0x73, KeyF12 = 0x7B;
constexpr int ShiftControl = 2, ShiftAlt = 4;
} // namespace

void Form_KeyDown(Workspace &workspace, frmDoc &document, int *keyCode, int shift)
{
    const int key = *keyCode;
    if (key < KeyF1 || key > KeyF12)
        return;
    *keyCode = 0;
    if (key == KeyF4 && (shift & ShiftAlt)) {
        workspace.slots.area().window()->close();
        return;
    }
    if (key == KeyF4 && (shift & ShiftControl)) {
        document.close();
        return;
    }
    const int index = key - KeyF1;
    if (workspace.functionKeys[size_t(index)].Active)
        PlaceFKey(workspace, document, index);
}

void PlaceFKey(Workspace &workspace, frmDoc &document, int index)
{
    const FunctionKeyRecord &key = workspace.functionKeys[size_t(index)];
    EditingSurface &text = *document.Text;
    if (text.SelLength() >= 1 && !key.PreserveText) {
        const int answer = ConfirmSelectionReplace(workspace);
        text.setFocus();
        if (answer == MsgAnswer::No)
            return;
    }
    const int start = text.SelStart();
    const QString front = TrimTrailing(key.FrontTag) + (key.FCRLF ? LineEnd : QString());
    const QString kept = text.SelLength() >= 1 && key.PreserveText ? text.SelRTF() : QString();
    const QString follow = TrimTrailing(key.FollowTag);
    const QString rear = (key.PCRLF ? LineEnd : QString()) + follow;
    const bool colour = workspace.options.isChecked(Option::Highlight);
    {
        EditingSurface::EditGroup oneStep(text);
        text.setSelText(QString());
        if (colour)
            ApplyClassFont(text, true);
        text.setSelText(front);
        if (colour)
            ApplyClassFont(text, false);
        if (!kept.isEmpty())
            text.setSelRTF(kept);
        if (colour)
            ApplyClassFont(text, true);
        text.setSelText(rear);
    }
    if (key.CursorPosition == 0)
        text.setSelStart(start);
    else if (key.CursorPosition == 1)
        text.setSelStart(text.SelStart() - int(follow.size()) - (key.PCRLF ? 2 : 0));
    text.setFocus();
}

} // namespace pw
