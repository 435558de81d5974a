#pragma once

#include "core/font_class.h"
#include "core/function_key_records.h"
#include "core/options.h"
#include "core/remembered_lists.h"

#include <QRect>
#include <QSettings>
#include <QStringList>

#include <array>
#include <memory>

class QWidget;

namespace pw {

class Workspace;

// Every setting. settings_store.cpp declares each one's section, key, type and default in one table;
// the groups marked below live in one section per font class, function key or list.
enum class Setting {
    // WinState
    State, Top, Left, Width, Height, Highlight, UHTML, Toolbar, LockFiles, SiteMap, MaximizeDocs,
    AutoSave, AddTemplate, Backcolor, SiteMapPath,
    // one section per font class
    FontColor, FontName, FontSize, FontBold, FontItalic,
    // one section per function key
    KeyActive, KeyFrontTag, KeyFCRLF, KeyFollowTag, KeyPCRLF, KeyPreserveText, KeyCursorPosition,
    // one section per list, keys "01" on
    PreviousFiles, PreviousTextures, PreviousURLs, PreviousImages, PreviousExtraTags,
    // History
    HistoryOpen, HistoryIOpen, HistoryReference, HistoryBrowser,
    // ResourceWinState
    ResourceTop, ResourceLeft, ResourceWidth, ResourceHeight,
    // under the organisation alone
    Version,
};

enum class FontSection { Html, Text, Comment };

// A window's place in twips.
struct WindowPlacement {
    double Top = 0;
    double Left = 0;
    double Width = 0;
    double Height = 0;
    bool operator==(const WindowPlacement &) const = default;
};

// The per-user settings tree: an INI file per user under "Tessaline/Pagewright", and the version under
// "Tessaline" alone. Sections are written as named, "[Fonts\HTML Font]"; a value of the wrong form
// reads as the key's default.
class SettingsStore
{
public:
    SettingsStore();
    ~SettingsStore();
    SettingsStore(const SettingsStore &) = delete;
    SettingsStore &operator=(const SettingsStore &) = delete;

    // Keys of a fixed section (WinState, History, Version); asking with the wrong type is a fault.
    bool readBool(Setting setting) const;
    int readInt(Setting setting) const;
    double readFloat(Setting setting) const;
    QString readString(Setting setting) const;
    void writeBool(Setting setting, bool value);
    void writeInt(Setting setting, int value);
    void writeFloat(Setting setting, double value);
    void writeString(Setting setting, const QString &value);

    FontClass font(FontSection section) const;
    void setFont(FontSection section, const FontClass &font);

    FunctionKeyRecord functionKey(int index) const; // 0 for F1
    void setFunctionKey(int index, const FunctionKeyRecord &record);

    // A list in the store's order, ending at the first empty entry, at most PreviousSavedMax long.
    QStringList list(PreviousKind kind) const;
    // Replaces the section: an empty list leaves none behind.
    void setList(PreviousKind kind, const QStringList &entries);

    HistoryPaths history() const;
    void setHistory(const HistoryPaths &paths);

    // The resource view's place; with nothing stored it stands as CenterForm would put it in available.
    WindowPlacement resourceWinState(const QRect &available) const;
    void setResourceWinState(const WindowPlacement &placement);

    // Writes what is pending; false when a file could not be written.
    bool sync();
    QString fileName() const;

    // The INI format both files are kept in; tests point its user path elsewhere with QSettings::setPath.
    static QSettings::Format format();

private:
    QSettings &tree(Setting setting) const;
    // instance fills the section of a font class or function key; defaultText overrides the table's.
    QVariant read(Setting setting, const QString &instance = {}, const char *defaultText = nullptr) const;
    void write(Setting setting, const QVariant &value, const QString &instance = {});

    std::unique_ptr<QSettings> m_app;
    std::unique_ptr<QSettings> m_organisation;
};

// The State that marks the very first run.
constexpr int FirstRunState = -2;

// The question of the first run, its lines joined by LineEnd.
QString FirstRunQuestion();

// The first-run values, as the registry states them.
ClassFonts DefaultClassFonts();
FunctionKeyRecord DefaultFunctionKey();
bool DefaultOption(Option option);
qint32 DefaultBackColor();

// Reads the settings into the main window's place and the workspace: options, back colour, font
// classes, function keys, remembered lists and History. Asks the first-run question when State
// says so.
void LoadSettings(QWidget &mainWindow, Workspace &workspace);
// Writes them back. A file that cannot be written is reported once; false then.
bool SaveSettings(const QWidget &mainWindow, Workspace &workspace);
// Reads the three font classes again, dropping changes made since the start.
ClassFonts LoadFontSettings();

} // namespace pw
