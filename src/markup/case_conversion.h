#pragma once

namespace pw {

class Workspace;
class frmDoc;

// Rewrites every tag of the document outside comments to upper case, quoted values kept, as one
// undo step; the document is dirty afterwards. Escape ends it early; an unclosed comment ends the
// walk there, without a message.
void ConvertTagsToUpper(Workspace &workspace, frmDoc &document);

// The action of mnuOptionUHTML: flips the option, which the colouring pass then follows. Open
// documents are not converted by the switch.
void ToggleUppercaseOption(Workspace &workspace);

} // namespace pw
