#pragma once

#include "wizards/frame_markup.h"

#include <QString>

#include <optional>
#include <utility>

class QDialog;

namespace pw
{

class Workspace;
class frmDoc;

// What the Options tab asks of a generation; a box that is off or disabled reads false.
struct FramePageOptions {
    FrameSetOptions sets;
    bool newDocument = true;
    QString title;
    bool saveFile = false; // on and enabled
    QString fileName;      // as typed
    bool noFramesTag = false;
    bool merge = false; // on and enabled
    QString mergeFile;  // as typed
    // In place of a frame set read from the current document (from, to): only the frame sets are
    // written, over it.
    std::optional<std::pair<int, int>> replace;
};

// Where a typed file name points: an absolute one as it stands; a relative one in the folder of
// the current document's file, else in the home folder.
QString FrameFilePath(const QString &typed, const frmDoc *current);

// Command6: the checks with their messages, then the page written into a new document (saved
// when asked) or at the caret of the current one, with status texts and progress. True when the
// page stands and the dialog is to go; false leaves the dialog shown with the design intact,
// after a refusal or a failure that was told and undone.
bool GenerateFramePage(Workspace &workspace, const FrameModel &model, const FramePageOptions &options,
                       QDialog &dialog);

} // namespace pw
