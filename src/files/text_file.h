#pragma once

#include "platform/error_codes.h"
#include "platform/file_format.h"
#include "platform/file_handles.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace pw {

// Called now and then during a long decode with the bytes done and the whole; returning false
// stops the decode.
using DecodeProgress = std::function<bool(qint64 done, qint64 total)>;

struct DecodedText {
    QString text;              // every line end CR LF, as the surface holds them
    FileFormat format;
    bool mixedLineEnds = false; // the file's line ends were not all alike
    bool cancelled = false;     // the progress callback stopped it; text is then empty
};

// Bytes of a file as text. Valid UTF-8 (after an optional byte-order mark, which is kept in the
// format) is read as UTF-8, anything else as Windows-1252, whose five unassigned bytes stand for
// the C1 controls of the same number so that every byte survives a round trip. Line ends (CR LF,
// LF, CR) are counted and the most frequent one is the file's convention, CR LF on a tie or in a
// file without any; a file with mixed line ends is saved with that one alone. A NUL byte stays a
// U+0000 character, which the surface keeps like any other, so it is written back as it was.
// Decoding goes in chunks of about a megabyte, with progress after each; when a late byte shows
// the file isn't UTF-8, the progress starts again from 0 for the Windows-1252 pass.
DecodedText decodeText(const QByteArray &bytes, const DecodeProgress &progress = {});

// The bytes a text with CR LF line ends becomes in a format. A character that Windows-1252
// can't hold makes the result empty and *unencodable its position in text (else -1).
QByteArray encodeText(const QString &text, const FileFormat &format, qsizetype *unencodable = nullptr);

// Why a save failed, beyond the error code that callers test.
enum class SaveFailure {
    None,
    ReadOnlyFile,   // 70: the file's mode has no owner write bit, or it can't be written here
    LockedFile,     // 70: another copy of the program has it locked (Lock Files)
    ReadOnlyFolder, // 70: the temporary file can't be made beside the target
    FolderMissing,  // 75: the folder is gone (or a part of the path isn't a folder)
    NotAFile,       // 75: the target is a folder or a device
    DiskFull,       // 75: no room left (or over the size limit of the process)
    Unencodable,    // 75: the text holds characters that Windows-1252 can't store
    Other,          // 75: anything else; message says what the platform said
};

struct SaveResult {
    ErrorCode error = ErrorCode::None;
    SaveFailure failure = SaveFailure::None;
    QString message; // a sentence for the user; empty on success

    bool ok() const { return error == ErrorCode::None; }
};

// Writes text (CR LF line ends) to path in a format: to a temporary file beside the target,
// then renamed over it, so that the old file stays whole whenever writing fails. A symlink is
// saved through to its target and stays a link. The new file takes the old one's mode and, as
// far as allowed, its owner and group; a new file gets the default mode. A read-only target or
// folder (no owner write bit, even for root) or a file locked by another copy fails before
// anything is written.
//
// A Windows-1252 document that has gained characters outside that code page isn't saved: the
// failure Unencodable names the first such character, and the caller may offer to save it as
// UTF-8 (change the format's encoding and save again).
SaveResult saveTextFile(const QString &path, const QString &text, const FileFormat &format);

// A document's save under slot: releases its own write lock, saves, binds the slot's handle to
// the new file and locks it again as it was. A slot that held nothing takes a handle on the
// saved file, locked when lockNew.
SaveResult saveDocumentFile(FileHandles &handles, int slot, const QString &path, const QString &text,
                            const FileFormat &format, bool lockNew = false);

// A whole read: the file held under slot (FileHandles::open), decoded. When decoding is
// cancelled the slot is let go again.
struct ReadResult {
    ErrorCode error = ErrorCode::None;
    DecodedText decoded;
};
ReadResult openDocumentFile(FileHandles &handles, int slot, const QString &path,
                            const DecodeProgress &progress = {});
// A one-off read that holds nothing: an import (Shared), a recovered autosave file (None).
ReadResult readTextFile(const QString &path, FileShare share, const DecodeProgress &progress = {});

} // namespace pw
