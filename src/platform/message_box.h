#pragma once

namespace pw {

// Classic message box styles: buttons + icon + default button, summed.
namespace MsgStyle {
constexpr int OkOnly = 0;
constexpr int OkCancel = 1;
constexpr int AbortRetryIgnore = 2;
constexpr int YesNoCancel = 3;
constexpr int YesNo = 4;
constexpr int RetryCancel = 5;
constexpr int Critical = 16;
constexpr int Question = 32;
constexpr int Exclamation = 48;
constexpr int Information = 64;
constexpr int DefaultButton2 = 256;
constexpr int DefaultButton3 = 512;
constexpr int buttonsOf(int style) { return style & 0x0F; }
constexpr int iconOf(int style) { return style & 0x70; }
constexpr int defaultButtonOf(int style) { return (style & 0x300) >> 8; } // 0-based
} // namespace MsgStyle

// Answer codes of a message box.
namespace MsgAnswer {
constexpr int OK = 1;
constexpr int Cancel = 2;
constexpr int Abort = 3;
constexpr int Retry = 4;
constexpr int Ignore = 5;
constexpr int Yes = 6;
constexpr int No = 7;
} // namespace MsgAnswer

// The answer codes of the buttons a style shows, in button order.
inline constexpr int buttonCount(int style)
{
    switch (MsgStyle::buttonsOf(style)) {
    case MsgStyle::OkOnly: return 1;
    case MsgStyle::AbortRetryIgnore:
    case MsgStyle::YesNoCancel: return 3;
    default: return 2;
    }
}

inline constexpr int buttonAnswer(int style, int index)
{
    using namespace MsgAnswer;
    switch (MsgStyle::buttonsOf(style)) {
    case MsgStyle::OkCancel: return index == 0 ? OK : Cancel;
    case MsgStyle::AbortRetryIgnore: return index == 0 ? Abort : index == 1 ? Retry : Ignore;
    case MsgStyle::YesNoCancel: return index == 0 ? Yes : index == 1 ? No : Cancel;
    case MsgStyle::YesNo: return index == 0 ? Yes : No;
    case MsgStyle::RetryCancel: return index == 0 ? Retry : Cancel;
    default: return OK;
    }
}

} // namespace pw
