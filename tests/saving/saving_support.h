#pragma once

#include "test_support.h"

#include "core/app_state.h"
#include "files/open_document.h"
#include "files/save_document.h"
#include "platform/file_handles.h"
#include "platform/message_box.h"

// Types text at the end, as a user would; the change marks the document dirty.
inline void typeAtEnd(pw::frmDoc *doc, const QString &text)
{
    doc->Text->setSelStart(doc->Text->TextLength());
    doc->Text->setSelText(text);
}

// Whether a file carries a write lock, as another copy of the program would find it.
inline bool lockedAgainstOthers(const QString &path)
{
    QByteArray bytes;
    return pw::readWholeFile(path, bytes, pw::FileShare::Shared) == pw::ErrorCode::PermissionDenied;
}
