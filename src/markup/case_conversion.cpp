#include "markup/case_conversion.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/long_pass.h"
#include "core/main_window.h"
#include "core/status_line.h"
#include "markup/highlighter.h"


namespace pw {

void ConvertTagsToUpper(frmDoc &document)
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main)
        return;
    EditingSurface &text = *document.Text;
    text.setVisible(true);
    const int caret = text.SelStart();
    {
        EditingSurface::EventBatch oneEvent(text);
        ProgressStrip strip;
        SetStatusText(QStringLiteral("Converting all HTML tags to upper case...Hit ESC to abort."));

        TagWalk walk;
        walk.uppercase = true;
        walk.rewriteAlways = true;
        walk.nextCommentBack = 1;
        {
            EditingSurface::EditGroup oneStep(text);
            WalkTags(text, walk);
        }
        text.setSelLength(0);
        text.setSelStart(caret);
    }
    ClearStatusText();
    main->slots().state(document.slot()).Dirty = True;
}

void ToggleUppercaseOption()
{
    if (frmMDIMain *main = frmMDIMain::instance())
        main->options().toggle(Option::UHTML);
}

} // namespace pw
