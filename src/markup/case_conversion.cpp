#include "markup/case_conversion.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/long_pass.h"
#include "core/workspace.h"
#include "markup/highlighter.h"

namespace pw {

void ConvertTagsToUpper(Workspace &workspace, frmDoc &document)
{
    if (document.state().binary)
        return;
    EditingSurface &text = *document.Text;
    text.setVisible(true);
    const int caret = text.SelStart();
    {
        LongPass pass(workspace, QStringLiteral("Converting all HTML tags to upper case...Hit ESC to abort."));
        EditingSurface::EventBatch oneEvent(text);
        TagWalk walk;
        walk.uppercase = true;
        walk.rewriteAlways = true;
        walk.nextCommentBack = 1;
        {
            EditingSurface::EditGroup oneStep(text);
            WalkTags(text, walk, workspace.platform, &pass);
        }
        text.setSelLength(0);
        text.setSelStart(caret);
    }
    document.state().setDirty(true);
}

void ToggleUppercaseOption(Workspace &workspace)
{
    workspace.options.toggle(Option::UHTML);
}

} // namespace pw
