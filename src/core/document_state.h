#pragma once

#include "platform/file_format.h"

#include <QObject>
#include <QString>

#include <array>

namespace pw {

// What a document knows of itself: its file (none while untitled) and how that file is written,
// whether it changed since it was loaded or saved (Dirty), whether it was saved since it was opened
// (Saved), and the anchor names found in it. The caption is derived: the path, or the name the
// document was given while it has no file ("Untitled: 3").
class DocumentState : public QObject
{
    Q_OBJECT

public:
    static constexpr int LocalNameCount = 22; // positions 0 to 21

    explicit DocumentState(QObject *parent = nullptr) : QObject(parent) {}

    QString path() const { return m_path; }
    void setPath(const QString &path);
    void setUntitledName(const QString &name);
    QString caption() const { return m_path.isEmpty() ? m_untitledName : m_path; }
    bool isUntitled() const { return m_path.isEmpty(); }

    bool Dirty() const { return m_dirty; }
    void setDirty(bool dirty);
    bool Saved() const { return m_saved; }
    void setSaved(bool saved) { m_saved = saved; }

    // How the file is written back: the encoding, byte-order mark and line ends it was read with.
    const FileFormat &format() const { return m_format; }
    // note: why the encoding isn't the one the file seemed to have, told in its place until the
    // encoding changes.
    void setFormat(const FileFormat &format, const QString &note = QString());
    // What the status bar shows of the encoding: its name, or the note when there is one.
    QString encodingText() const;

    // The file didn't look like text and was opened anyway: no pass rewrites its text.
    bool binary = false;
    // Anchor names found by the last open, at positions 1 to 20.
    std::array<QString, LocalNameCount> LocalNames;

Q_SIGNALS:
    void dirtyChanged(bool dirty);
    void captionChanged(const QString &caption);
    void formatChanged();

private:
    QString m_path;
    QString m_untitledName;
    bool m_dirty = false;
    bool m_saved = false;
    FileFormat m_format;
    QString m_encodingNote;
};

} // namespace pw
