#pragma once

#include <QString>

#include <array>

namespace pw {

// What one function key places: a front text and a following text around the selection.
struct FunctionKeyRecord {
    static constexpr int TagWidth = 30;

    bool Active = false;
    QString FrontTag = QString(TagWidth, QLatin1Char(' ')); // fixed width, blank-padded
    qint16 FCRLF = 0;                                        // non-zero: a line end follows FrontTag
    QString FollowTag = QString(TagWidth, QLatin1Char(' '));
    qint16 PCRLF = 0; // non-zero: a line end precedes FollowTag
    bool PreserveText = true;
    qint16 CursorPosition = 1; // 0 front, 1 middle, 2 behind

    bool operator==(const FunctionKeyRecord &) const = default;
};

// A text as a fixed-width field holds it: cut to the width, blank-padded.
QString FixedWidthText(const QString &text, int width = FunctionKeyRecord::TagWidth);

constexpr int FunctionKeyCount = 12;

// F1 to F12 at index 0 to 11; shared by all documents, loaded and saved with the settings.
inline std::array<FunctionKeyRecord, FunctionKeyCount> FunctionKeys;

} // namespace pw
