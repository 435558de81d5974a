#pragma once

namespace pw {

// The four marker pairs whose contents are renewed with the date or time when a saved
// document closes.
enum class StampKind { LongDate, ShortDate, LongTime, ShortTime };

// mnuAccretionLDate and its three twins: an empty marker pair at the caret, in the comment class.
void PlaceStamp(StampKind kind);
// The closing pass over slot's document; rewrites its file when a stamp changed.
void StampDocument(int slot);
// StampDocument when the document closing in slot was saved and is clean and titled.
void StampOnClose(int slot);

} // namespace pw
