#pragma once

#include "test_support.h"

#include "core/app_state.h"
#include "files/text_file.h"
#include "platform/file_handles.h"

#include <QFile>
#include <QTest>

// A titled document as an open leaves it: the file read and held under the slot, clean.
inline pw::frmDoc *openTitled(TestProgram &program, const QString &path)
{
    pw::DocumentSlots &slots = program.main().slots();
    const int slot = slots.FindFreeSlot();
    pw::frmDoc *doc = slots.CreateDocumentWindow(slot, path);
    const pw::ReadResult read = pw::openDocumentFile(pw::FileHandles::instance(), slot, path);
    if (read.error != pw::ErrorCode::None) {
        slots.abandon(slot);
        return nullptr;
    }
    doc->Text->setText(read.decoded.text);
    doc->fileFormat = read.decoded.format;
    if (program.main().options().isChecked(pw::Option::LockFiles))
        pw::FileHandles::instance().lock(slot);
    slots.state(slot).Dirty = pw::False;
    slots.CurrentDocument = slot;
    return doc;
}

// Types text at the end, as a user would; the change marks the document dirty.
inline void typeAtEnd(pw::frmDoc *doc, const QString &text)
{
    doc->Text->setSelStart(doc->Text->TextLength());
    doc->Text->setSelText(text);
}

inline QByteArray fileBytes(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<unreadable>");
}

inline bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

// Whether a file carries a write lock, as another copy of the program would find it.
inline bool lockedAgainstOthers(const QString &path)
{
    QByteArray bytes;
    return pw::readWholeFile(path, bytes, pw::FileShare::Shared) == pw::ErrorCode::PermissionDenied;
}
