#pragma once

#include "files/text_codec.h"
#include "platform/error_codes.h"
#include "platform/file_format.h"
#include "platform/file_handles.h"

#include <QByteArray>
#include <QString>

namespace pw {

// Why a save failed, beyond the error code that callers test.
enum class SaveFailure {
    None,
    ReadOnlyFile,   // 70: the file's mode has no owner write bit, or it can't be written here
    LockedFile,     // 70: another copy of the program has it locked (Lock Files)
    ReadOnlyFolder, // 70: the temporary file can't be made beside the target
    FolderMissing,  // 75: the folder is gone (or a part of the path isn't a folder)
    NotAFile,       // 75: the target is a folder or a device
    DiskFull,       // 75: no room left (or over the size limit of the process)
    Unencodable,    // 75: the text holds characters that the file's encoding can't store
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
// A document that has gained characters its encoding can't hold (outside Windows-1252, say) isn't
// saved: the failure Unencodable names the first such character, and the caller may offer to save
// it as UTF-8 (change the format's encoding and save again).
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
