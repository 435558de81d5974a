#pragma once

#include "wizards/frame_model.h"
#include "wizards/wizard_conduct.h"

#include <functional>

namespace pw
{

// How the sizes of a frame set are written: percent of the rectangle, or pixels of the target
// screen (the model's ScaleX and ScaleY).
struct FrameSetOptions {
    bool percent = true;
    float scaleX = 640.0f / FrameModel::BoxWidth;
    float scaleY = 480.0f / FrameModel::BoxHeight;
};

// The nested frame sets of the design, found again from the geometry: columns first, a cut only
// where a line spans the rectangle exactly, then each piece the same way, a leaf as a FRAME line.
// Every line is a tag piece ending in CR LF; leaf() follows each FRAME line.
void BuildFrameSets(const FrameModel &model, const FrameSetOptions &options,
                    const std::function<void(const MarkupPiece &)> &write,
                    const std::function<void()> &leaf = {});
QList<MarkupPiece> FrameSetPieces(const FrameModel &model, const FrameSetOptions &options);

// The FRAME tag of one frame, attributes in their fixed order, without indent or line end.
QString FrameTag(const FrameSpec &frame);

// The body of a page for the NOFRAMES section: from "<BODY" (found ignoring case) to the first
// "</BODY>" on a later line, which is written upper case; the lines as they stand otherwise, each
// with CR LF. Nothing when there is no "<BODY". progress(done, total) follows each line, in
// characters of the text read.
QString NoFramesSection(const QString &fileText,
                        const std::function<void(qint64 done, qint64 total)> &progress = {});

// The first five lines of a new frame-set page, each ending in CR LF.
QString FramePageHeader(const QString &title);

inline const QString FrameWizardComment =
    QStringLiteral("<!-- Frame structures created using Tessaline Pagewright's Frame Wizard -->");

} // namespace pw
