#pragma once

#include <QString>

#include <array>

namespace pw {

// What one function key places: a front text and a following text around the selection. The
// first-run values live with the settings (DefaultFunctionKey).
struct FunctionKeyRecord {
    static constexpr int TagWidth = 30;

    bool Active = false;
    QString FrontTag;   // fixed width, blank-padded
    qint16 FCRLF = 0;   // non-zero: a line end follows FrontTag
    QString FollowTag;
    qint16 PCRLF = 0;   // non-zero: a line end precedes FollowTag
    bool PreserveText = false;
    qint16 CursorPosition = 0; // 0 front, 1 middle, 2 behind

    bool operator==(const FunctionKeyRecord &) const = default;
};

// A text as a fixed-width field holds it: cut to the width, blank-padded.
QString FixedWidthText(const QString &text, int width = FunctionKeyRecord::TagWidth);

constexpr int FunctionKeyCount = 12;

// F1 to F12 at index 0 to 11; shared by all documents, loaded and saved with the settings.
using FunctionKeyTable = std::array<FunctionKeyRecord, FunctionKeyCount>;

} // namespace pw
