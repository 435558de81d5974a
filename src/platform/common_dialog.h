#pragma once

#include "platform/error_codes.h"

#include <QString>
#include <QStringList>

namespace pw {

class Platform;

// CMDialog1: the shared open, save, colour, font and help dialog. Callers set its fields, call a
// Show...() and read the fields back; a cancelled dialog reports ErrorCode::Cancel.
class CommonDialog
{
public:
    enum class Kind { Open, Save, Color, Font, Help };

    // Shown through platform, or through the installed one when none is given.
    explicit CommonDialog(Platform *platform = nullptr) : m_platform(platform) {}

    QString DialogTitle;
    // "Description|pattern;pattern|Description|pattern..." as the callers write it.
    QString Filter;
    int FilterIndex = 1; // 1-based; set to the chosen filter after Open and Save
    QString FileName;
    QString FileTitle; // the name without its folder, set after Open and Save
    QString InitDir;
    QString DefaultExt;
    int Flags = 0;
    int Color = 0; // red in the low byte
    QString FontName;
    int FontSize = 10;
    bool FontBold = false;
    bool FontItalic = false;
    QString HelpFile;
    int HelpCommand = 0;

    ErrorCode ShowOpen() { return show(Kind::Open); }
    ErrorCode ShowSave() { return show(Kind::Save); }
    ErrorCode ShowColor() { return show(Kind::Color); }
    ErrorCode ShowFont() { return show(Kind::Font); }
    ErrorCode ShowHelp() { return show(Kind::Help); }

    // The filter as pairs of description and patterns.
    struct FilterEntry {
        QString description;
        QStringList patterns;
    };
    static QList<FilterEntry> parseFilter(const QString &filter);
    // The filter as a file dialog's name filters ("Description (patterns)"): patterns trimmed, and
    // "*.*" as "*", which here means every file, with a dot in its name or not.
    static QStringList nameFilters(const QString &filter);

private:
    ErrorCode show(Kind kind);

    Platform *m_platform;
};

} // namespace pw
