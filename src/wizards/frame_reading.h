#pragma once

#include "wizards/frame_model.h"

#include <QList>
#include <QString>

#include <optional>

namespace pw
{

// A frame set read back from a page: where it stands and the design it draws.
struct FrameSetRead {
    int start = 0;           // from the start of its line when only blanks stand before it
    int end = 0;             // behind "</FRAMESET>" and the line end that follows it
    QList<FrameSpec> frames; // tiling the box, the first frame first
    bool percent = true;     // the sizes were given in percent (or shares), not in pixels
};

// The outermost FRAMESET element around position caret (0-based) of text, as a design: each frame
// set's sizes (percent, pixels at scaleX/scaleY pixels per twip, "*" shares) become cuts on the
// mouse's grid of 15 twips, chosen so that the sizes come out again where the grid allows; a cut
// that would line up with one beside it is moved a step, so the sets are found again as they were.
// Each FRAME's attributes fill its frame; the others go to Extra as written. Nothing when the caret
// is in no frame set, or the frame set has no end tag.
std::optional<FrameSetRead> ReadFrameSetAt(const QString &text, int caret, float scaleX, float scaleY);

} // namespace pw
