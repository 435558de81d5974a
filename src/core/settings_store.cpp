#include "core/settings_store.h"

#include "core/app_state.h"
#include "core/workspace.h"
#include "platform/file_association.h"
#include "platform/message_box.h"
#include "platform/platform.h"

#include <QIODevice>
#include <QMap>
#include <QWidget>

#include <cmath>
#include <limits>
#include <optional>

namespace pw {

namespace {

enum class Type { Boolean, Int16, Int32, Single, Text, FixedText, List };
enum class Tree { App, Organisation };

struct KeyEntry {
    Setting setting;
    const char *section; // "%1" stands for the font class or the key number
    const char *key;     // nullptr for a list: its keys are numbered "01" on
    Type type;
    const char *defaultText; // as the store would hold it; nullptr when the caller works it out
    Tree tree = Tree::App;
};

// The one place every key is named.
constexpr KeyEntry kRegistry[] = {
    {Setting::State, "WinState", "State", Type::Int16, "-2"},
    {Setting::Top, "WinState", "Top", Type::Single, "0"},
    {Setting::Left, "WinState", "Left", Type::Single, "0"},
    {Setting::Width, "WinState", "Width", Type::Single, "7920"},
    {Setting::Height, "WinState", "height", Type::Single, "6630"},
    {Setting::Highlight, "WinState", "Highlight", Type::Boolean, "True"},
    {Setting::UHTML, "WinState", "UHTML", Type::Boolean, "True"},
    {Setting::Toolbar, "WinState", "Toolbar", Type::Boolean, "True"},
    {Setting::LockFiles, "WinState", "LockFiles", Type::Boolean, "False"},
    {Setting::SiteMap, "WinState", "SiteMap", Type::Boolean, "False"},
    {Setting::MaximizeDocs, "WinState", "MaximizeDocs", Type::Boolean, "False"},
    {Setting::AutoSave, "WinState", "AutoSave", Type::Boolean, "False"},
    {Setting::AddTemplate, "WinState", "AddTemplate", Type::Boolean, "True"},
    {Setting::Backcolor, "WinState", "Backcolor", Type::Int32, "16777215"},
    {Setting::SiteMapPath, "WinState", "SiteMapPath", Type::Text, ""},

    {Setting::FontColor, "Fonts\\%1", "Color", Type::Int32, "0"},
    {Setting::FontName, "Fonts\\%1", "Name", Type::Text, "Arial"},
    {Setting::FontSize, "Fonts\\%1", "Size", Type::Int16, "8.25"},
    {Setting::FontBold, "Fonts\\%1", "Bold", Type::Boolean, nullptr}, // by class, see kFontSections
    {Setting::FontItalic, "Fonts\\%1", "Italic", Type::Boolean, "False"},

    {Setting::KeyActive, "Costume Keys\\F%1_Key", "Active", Type::Boolean, "False"},
    {Setting::KeyFrontTag, "Costume Keys\\F%1_Key", "FrontTag", Type::FixedText, ""},
    {Setting::KeyFCRLF, "Costume Keys\\F%1_Key", "FCRLF", Type::Int16, "0"},
    {Setting::KeyFollowTag, "Costume Keys\\F%1_Key", "FollowTag", Type::FixedText, ""},
    {Setting::KeyPCRLF, "Costume Keys\\F%1_Key", "PCRLF", Type::Int16, "0"},
    {Setting::KeyPreserveText, "Costume Keys\\F%1_Key", "PreserveText", Type::Boolean, "True"},
    {Setting::KeyCursorPosition, "Costume Keys\\F%1_Key", "CursorPosition", Type::Int16, "1"},

    {Setting::PreviousFiles, "Previous\\Files", nullptr, Type::List, ""},
    {Setting::PreviousTextures, "Previous\\Textures", nullptr, Type::List, ""},
    {Setting::PreviousURLs, "Previous\\URLs", nullptr, Type::List, ""},
    {Setting::PreviousImages, "Previous\\Images", nullptr, Type::List, ""},
    {Setting::PreviousExtraTags, "Previous\\Extra Tags", nullptr, Type::List, ""},

    {Setting::HistoryOpen, "History", "Open", Type::Text, ""},
    {Setting::HistoryIOpen, "History", "IOpen", Type::Text, ""},
    {Setting::HistoryReference, "History", "Reference", Type::Text, ""},
    {Setting::HistoryBrowser, "History", "Browser", Type::Text, ""},

    {Setting::ResourceTop, "ResourceWinState", "Top", Type::Single, nullptr},
    {Setting::ResourceLeft, "ResourceWinState", "Left", Type::Single, nullptr},
    {Setting::ResourceWidth, "ResourceWinState", "Width", Type::Single, "3030"},
    {Setting::ResourceHeight, "ResourceWinState", "height", Type::Single, "4650"},

    {Setting::Version, "Pagewright", "Version", Type::Text, "", Tree::Organisation},
};

constexpr bool registryInEnumOrder()
{
    for (size_t i = 0; i < std::size(kRegistry); ++i)
        if (size_t(kRegistry[i].setting) != i)
            return false;
    return std::size(kRegistry) == size_t(Setting::Version) + 1;
}
static_assert(registryInEnumOrder(), "kRegistry must list every Setting in enum order");

const KeyEntry &entryOf(Setting setting)
{
    return kRegistry[size_t(setting)];
}

struct FontSectionEntry {
    const char *name;
    const char *boldDefault;
};
constexpr FontSectionEntry kFontSections[] = {
    {"HTML Font", "True"},
    {"TEXT Font", "False"},
    {"Comment Font", "False"},
};

constexpr Setting kListSettings[PreviousKindCount] = {Setting::PreviousFiles, Setting::PreviousTextures,
                                                      Setting::PreviousURLs, Setting::PreviousImages,
                                                      Setting::PreviousExtraTags};

QString twoDigits(int number)
{
    return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

// QSettings separates groups with "/"; the tree's sections use "\".
QString groupOf(const KeyEntry &s, const QString &instance)
{
    QString section = QLatin1String(s.section);
    if (section.contains(QLatin1String("%1")))
        section = section.arg(instance);
    return section.replace(QLatin1Char('\\'), QLatin1Char('/'));
}

QString pathOf(const KeyEntry &s, const QString &instance)
{
    return groupOf(s, instance) + QLatin1Char('/') + QLatin1String(s.key);
}

std::optional<double> parseNumber(const QString &text)
{
    if (!IsNumeric(text))
        return std::nullopt;
    return text.trimmed().toDouble();
}

// The value of text as type, or an invalid QVariant when it has the wrong form.
QVariant parse(Type type, const QString &text)
{
    switch (type) {
    case Type::Boolean: {
        const QString t = text.trimmed();
        if (t.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
            return true;
        if (t.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
            return false;
        if (const auto n = parseNumber(t))
            return *n != 0;
        return {};
    }
    case Type::Int16:
    case Type::Int32: {
        const auto n = parseNumber(text);
        if (!n)
            return {};
        const double rounded = std::nearbyint(*n); // halves to even, as the usual conversion does
        const double low = type == Type::Int16 ? std::numeric_limits<qint16>::min()
                                               : std::numeric_limits<qint32>::min();
        const double high = type == Type::Int16 ? std::numeric_limits<qint16>::max()
                                                : std::numeric_limits<qint32>::max();
        if (rounded < low || rounded > high)
            return {};
        return int(rounded);
    }
    case Type::Single: {
        const auto n = parseNumber(text);
        return n ? QVariant(*n) : QVariant();
    }
    case Type::FixedText:
        return FixedWidthText(text);
    case Type::Text:
    case Type::List:
        return text;
    }
    return {};
}

QString decimalText(double value)
{
    QString text = QString::number(value, 'f', 6);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

QString formatValue(Type type, const QVariant &value)
{
    switch (type) {
    case Type::Boolean: return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case Type::Int16:
    case Type::Int32: return QString::number(value.toInt());
    case Type::Single: return decimalText(value.toDouble());
    case Type::FixedText: return FixedWidthText(value.toString());
    case Type::Text:
    case Type::List: return value.toString();
    }
    return {};
}

// The INI dialect of the store: sections written as the tree names them ("[Costume Keys\F01_Key]"),
// values as they are unless blanks at either end or quotes need a quoted form.
QString quoteValue(const QString &value)
{
    bool plain = !value.startsWith(QLatin1Char('"'));
    if (!value.isEmpty() && (value.front().isSpace() || value.back().isSpace()))
        plain = false;
    for (QChar c : value)
        if (c.unicode() < 0x20)
            plain = false;
    if (plain)
        return value;
    QString out = QStringLiteral("\"");
    for (QChar c : value) {
        switch (c.unicode()) {
        case '"': out += QLatin1String("\\\""); break;
        case '\\': out += QLatin1String("\\\\"); break;
        case '\n': out += QLatin1String("\\n"); break;
        case '\r': out += QLatin1String("\\r"); break;
        case '\t': out += QLatin1String("\\t"); break;
        default:
            if (c.unicode() < 0x20)
                out += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
            else
                out += c;
        }
    }
    return out + QLatin1Char('"');
}

QString unquoteValue(const QString &value)
{
    if (value.size() < 2 || !value.startsWith(QLatin1Char('"')) || !value.endsWith(QLatin1Char('"')))
        return value;
    QString out;
    const qsizetype end = value.size() - 1;
    for (qsizetype i = 1; i < end; ++i) {
        const QChar c = value[i];
        if (c != QLatin1Char('\\') || i + 1 >= end) {
            out += c;
            continue;
        }
        const QChar e = value[++i];
        switch (e.unicode()) {
        case 'n': out += QLatin1Char('\n'); break;
        case 'r': out += QLatin1Char('\r'); break;
        case 't': out += QLatin1Char('\t'); break;
        case 'x': {
            bool ok = false;
            const int code = value.mid(i + 1, 2).toInt(&ok, 16);
            if (ok && i + 2 < end) {
                out += QChar(code);
                i += 2;
            } else {
                out += e;
            }
            break;
        }
        default: out += e;
        }
    }
    return out;
}

bool readIni(QIODevice &device, QSettings::SettingsMap &map)
{
    const QString text = QString::fromUtf8(device.readAll());
    QString group;
    for (QStringView line : QStringView(text).split(QLatin1Char('\n'))) {
        line = line.trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char(';')) || line.startsWith(QLatin1Char('#')))
            continue;
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']'))) {
            group = line.mid(1, line.size() - 2).trimmed().toString();
            group.replace(QLatin1Char('\\'), QLatin1Char('/'));
            continue;
        }
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        if (equals <= 0)
            continue;
        QString key = line.left(equals).trimmed().toString().replace(QLatin1Char('\\'), QLatin1Char('/'));
        if (!group.isEmpty())
            key.prepend(group + QLatin1Char('/'));
        map.insert(key, unquoteValue(line.mid(equals + 1).trimmed().toString()));
    }
    return true;
}

bool writeIni(QIODevice &device, const QSettings::SettingsMap &map)
{
    // A key's section is everything before its last "/".
    QMap<QString, QList<QPair<QString, QString>>> sections;
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        const qsizetype slash = it.key().lastIndexOf(QLatin1Char('/'));
        QString section = slash < 0 ? QString() : it.key().left(slash);
        section.replace(QLatin1Char('/'), QLatin1Char('\\'));
        sections[section].append({it.key().mid(slash + 1), it.value().toString()});
    }
    QString out;
    for (auto it = sections.cbegin(); it != sections.cend(); ++it) {
        if (!out.isEmpty())
            out += QLatin1Char('\n');
        if (!it.key().isEmpty())
            out += QLatin1Char('[') + it.key() + QLatin1String("]\n");
        for (const auto &[key, value] : it.value())
            out += key + QLatin1Char('=') + quoteValue(value) + QLatin1Char('\n');
    }
    const QByteArray bytes = out.toUtf8();
    return device.write(bytes) == bytes.size();
}

Qt::WindowStates windowStateOf(int state)
{
    switch (state) {
    case 1: return Qt::WindowMinimized;
    case 2: return Qt::WindowMaximized;
    default: return Qt::WindowNoState;
    }
}

int stateOf(const QWidget &window)
{
    if (window.isMinimized())
        return 1;
    if (window.isMaximized() || window.isFullScreen())
        return 2;
    return 0;
}

// The options with their keys, in the order they are read.
struct OptionSetting {
    Option option;
    Setting setting;
};
constexpr OptionSetting kOptionSettings[] = {
    {Option::Highlight, Setting::Highlight},       {Option::UHTML, Setting::UHTML},
    {Option::Toolbar, Setting::Toolbar},           {Option::LockFiles, Setting::LockFiles},
    {Option::SiteMap, Setting::SiteMap},           {Option::MaximizeDocs, Setting::MaximizeDocs},
    {Option::AutoSave, Setting::AutoSave},         {Option::AddTemplate, Setting::AddTemplate},
};

// A key's first-run value.
QVariant defaultOf(Setting setting, const QString &instance = {})
{
    const KeyEntry &s = entryOf(setting);
    if (setting == Setting::FontBold)
        for (const FontSectionEntry &fs : kFontSections)
            if (instance == QLatin1String(fs.name))
                return parse(s.type, QLatin1String(fs.boldDefault));
    return parse(s.type, QLatin1String(s.defaultText));
}

} // namespace

SettingsStore::SettingsStore()
    : m_app(std::make_unique<QSettings>(format(), QSettings::UserScope, QStringLiteral("Tessaline"),
                                        QStringLiteral("Pagewright"))),
      m_organisation(std::make_unique<QSettings>(format(), QSettings::UserScope, QStringLiteral("Tessaline")))
{
    // Only what this user's files hold counts; no system-wide file shows through.
    m_app->setFallbacksEnabled(false);
    m_organisation->setFallbacksEnabled(false);
}

SettingsStore::~SettingsStore() = default;

QSettings::Format SettingsStore::format()
{
    static const QSettings::Format registered =
        QSettings::registerFormat(QStringLiteral("ini"), readIni, writeIni);
    return registered;
}

QSettings &SettingsStore::tree(Setting setting) const
{
    return entryOf(setting).tree == Tree::App ? *m_app : *m_organisation;
}

QVariant SettingsStore::read(Setting setting, const QString &instance, const char *defaultText) const
{
    const KeyEntry &s = entryOf(setting);
    const QVariant stored = tree(setting).value(pathOf(s, instance));
    if (stored.isValid()) {
        const QVariant value = parse(s.type, stored.toString());
        if (value.isValid())
            return value;
    }
    return parse(s.type, QLatin1String(defaultText ? defaultText : s.defaultText));
}

void SettingsStore::write(Setting setting, const QVariant &value, const QString &instance)
{
    const KeyEntry &s = entryOf(setting);
    tree(setting).setValue(pathOf(s, instance), formatValue(s.type, value));
}

bool SettingsStore::readBool(Setting setting) const
{
    Q_ASSERT(entryOf(setting).type == Type::Boolean);
    return read(setting).toBool();
}

int SettingsStore::readInt(Setting setting) const
{
    Q_ASSERT(entryOf(setting).type == Type::Int16 || entryOf(setting).type == Type::Int32);
    return read(setting).toInt();
}

double SettingsStore::readFloat(Setting setting) const
{
    Q_ASSERT(entryOf(setting).type == Type::Single && entryOf(setting).defaultText);
    return read(setting).toDouble();
}

QString SettingsStore::readString(Setting setting) const
{
    Q_ASSERT(entryOf(setting).type == Type::Text);
    return read(setting).toString();
}

void SettingsStore::writeBool(Setting setting, bool value)
{
    Q_ASSERT(entryOf(setting).type == Type::Boolean);
    write(setting, value);
}

void SettingsStore::writeInt(Setting setting, int value)
{
    Q_ASSERT(entryOf(setting).type == Type::Int16 || entryOf(setting).type == Type::Int32);
    write(setting, value);
}

void SettingsStore::writeFloat(Setting setting, double value)
{
    Q_ASSERT(entryOf(setting).type == Type::Single);
    write(setting, value);
}

void SettingsStore::writeString(Setting setting, const QString &value)
{
    Q_ASSERT(entryOf(setting).type == Type::Text);
    write(setting, value);
}

FontClass SettingsStore::font(FontSection section) const
{
    const FontSectionEntry &fs = kFontSections[size_t(section)];
    const QString name = QLatin1String(fs.name);
    FontClass f;
    f.Color = read(Setting::FontColor, name).toInt();
    f.Name = read(Setting::FontName, name).toString();
    f.Size = qint16(read(Setting::FontSize, name).toInt());
    f.Bold = read(Setting::FontBold, name, fs.boldDefault).toBool();
    f.Italic = read(Setting::FontItalic, name).toBool();
    return f;
}

void SettingsStore::setFont(FontSection section, const FontClass &f)
{
    const QString name = QLatin1String(kFontSections[size_t(section)].name);
    write(Setting::FontColor, f.Color, name);
    write(Setting::FontName, f.Name, name);
    write(Setting::FontSize, f.Size, name);
    write(Setting::FontBold, f.Bold, name);
    write(Setting::FontItalic, f.Italic, name);
}

FunctionKeyRecord SettingsStore::functionKey(int index) const
{
    const QString number = twoDigits(index + 1);
    FunctionKeyRecord r;
    r.Active = read(Setting::KeyActive, number).toBool();
    r.FrontTag = read(Setting::KeyFrontTag, number).toString();
    r.FCRLF = qint16(read(Setting::KeyFCRLF, number).toInt());
    r.FollowTag = read(Setting::KeyFollowTag, number).toString();
    r.PCRLF = qint16(read(Setting::KeyPCRLF, number).toInt());
    r.PreserveText = read(Setting::KeyPreserveText, number).toBool();
    r.CursorPosition = qint16(read(Setting::KeyCursorPosition, number).toInt());
    return r;
}

void SettingsStore::setFunctionKey(int index, const FunctionKeyRecord &r)
{
    const QString number = twoDigits(index + 1);
    write(Setting::KeyActive, r.Active, number);
    write(Setting::KeyFrontTag, r.FrontTag, number);
    write(Setting::KeyFCRLF, r.FCRLF, number);
    write(Setting::KeyFollowTag, r.FollowTag, number);
    write(Setting::KeyPCRLF, r.PCRLF, number);
    write(Setting::KeyPreserveText, r.PreserveText, number);
    write(Setting::KeyCursorPosition, r.CursorPosition, number);
}

QStringList SettingsStore::list(PreviousKind kind) const
{
    const Setting setting = kListSettings[size_t(kind)];
    QSettings &settings = tree(setting);
    settings.beginGroup(groupOf(entryOf(setting), {}));
    QStringList entries;
    for (const QString &key : settings.childKeys()) {
        const QString entry = settings.value(key).toString();
        if (entry.isEmpty() || entries.size() == PreviousSavedMax)
            break;
        entries << entry;
    }
    settings.endGroup();
    return entries;
}

void SettingsStore::setList(PreviousKind kind, const QStringList &entries)
{
    const Setting setting = kListSettings[size_t(kind)];
    QSettings &settings = tree(setting);
    const QString group = groupOf(entryOf(setting), {});
    settings.remove(group);
    for (int i = 0; i < entries.size() && i < PreviousSavedMax && !entries[i].isEmpty(); ++i)
        settings.setValue(group + QLatin1Char('/') + twoDigits(i + 1), entries[i]);
}

HistoryPaths SettingsStore::history() const
{
    return {readString(Setting::HistoryOpen), readString(Setting::HistoryIOpen),
            readString(Setting::HistoryReference), readString(Setting::HistoryBrowser)};
}

void SettingsStore::setHistory(const HistoryPaths &paths)
{
    writeString(Setting::HistoryOpen, paths.Open);
    writeString(Setting::HistoryIOpen, paths.IOpen);
    writeString(Setting::HistoryReference, paths.Reference);
    writeString(Setting::HistoryBrowser, paths.Browser);
}

WindowPlacement SettingsStore::resourceWinState(const QRect &available) const
{
    WindowPlacement p;
    p.Width = read(Setting::ResourceWidth).toDouble();
    p.Height = read(Setting::ResourceHeight).toDouble();
    const QString top = decimalText(pixelsToTwips(available.top()) +
                                    (pixelsToTwips(available.height()) - p.Height) * 0.8 / 2);
    const QString left = decimalText(pixelsToTwips(available.left()) +
                                     (pixelsToTwips(available.width()) - p.Width) / 2);
    p.Top = read(Setting::ResourceTop, {}, qPrintable(top)).toDouble();
    p.Left = read(Setting::ResourceLeft, {}, qPrintable(left)).toDouble();
    return p;
}

void SettingsStore::setResourceWinState(const WindowPlacement &p)
{
    write(Setting::ResourceTop, p.Top);
    write(Setting::ResourceLeft, p.Left);
    write(Setting::ResourceWidth, p.Width);
    write(Setting::ResourceHeight, p.Height);
}

bool SettingsStore::sync()
{
    m_organisation->sync();
    m_app->sync();
    return m_organisation->status() == QSettings::NoError && m_app->status() == QSettings::NoError;
}

QString SettingsStore::fileName() const
{
    return m_app->fileName();
}

QString FirstRunQuestion()
{
    return QStringList{QStringLiteral("Would you like Pagewright to be"),
                       QStringLiteral("associated with the following files?"),
                       QString(),
                       QStringLiteral(".htm, .html, .shtml"),
                       QString(),
                       QStringLiteral("You will not be asked again.  You can"),
                       QStringLiteral("associate these files with Pagewright"),
                       QStringLiteral("at any time by selecting Associate from"),
                       QStringLiteral("the Options menu.")}
        .join(LineEnd);
}

ClassFonts DefaultClassFonts()
{
    const auto font = [](FontSection section) {
        const QString name = QLatin1String(kFontSections[size_t(section)].name);
        FontClass f;
        f.Color = defaultOf(Setting::FontColor, name).toInt();
        f.Name = defaultOf(Setting::FontName, name).toString();
        f.Size = qint16(defaultOf(Setting::FontSize, name).toInt());
        f.Bold = defaultOf(Setting::FontBold, name).toBool();
        f.Italic = defaultOf(Setting::FontItalic, name).toBool();
        return f;
    };
    return {font(FontSection::Text), font(FontSection::Html), font(FontSection::Comment)};
}

FunctionKeyRecord DefaultFunctionKey()
{
    FunctionKeyRecord r;
    r.Active = defaultOf(Setting::KeyActive).toBool();
    r.FrontTag = defaultOf(Setting::KeyFrontTag).toString();
    r.FCRLF = qint16(defaultOf(Setting::KeyFCRLF).toInt());
    r.FollowTag = defaultOf(Setting::KeyFollowTag).toString();
    r.PCRLF = qint16(defaultOf(Setting::KeyPCRLF).toInt());
    r.PreserveText = defaultOf(Setting::KeyPreserveText).toBool();
    r.CursorPosition = qint16(defaultOf(Setting::KeyCursorPosition).toInt());
    return r;
}

bool DefaultOption(Option option)
{
    for (const OptionSetting &o : kOptionSettings)
        if (o.option == option)
            return defaultOf(o.setting).toBool();
    return false;
}

qint32 DefaultBackColor()
{
    return defaultOf(Setting::Backcolor).toInt();
}

void LoadSettings(QWidget &mainWindow, Workspace &ws)
{
    SettingsStore store;

    int state = store.readInt(Setting::State);
    if (state == FirstRunState) {
        if (ws.MsgBox(FirstRunQuestion(), MsgStyle::YesNo + MsgStyle::Exclamation) == MsgAnswer::Yes)
            AssociateFiles(ws.platform);
        state = 2;
    }
    // The normal place goes first: Qt keeps it as the place to restore to only if the window is not
    // maximised yet.
    mainWindow.move(twipsToPixels(store.readFloat(Setting::Left)), twipsToPixels(store.readFloat(Setting::Top)));
    mainWindow.resize(twipsToPixels(store.readFloat(Setting::Width)),
                      twipsToPixels(store.readFloat(Setting::Height)));
    mainWindow.setWindowState(windowStateOf(state));

    for (const OptionSetting &o : kOptionSettings)
        ws.options.setChecked(o.option, store.readBool(o.setting));
    ws.backColor = store.readInt(Setting::Backcolor);

    for (int k = 0; k < PreviousKindCount; ++k)
        ws.previous.lists[size_t(k)] = store.list(PreviousKind(k));
    ws.fonts = {store.font(FontSection::Text), store.font(FontSection::Html), store.font(FontSection::Comment)};
    for (int i = 0; i < FunctionKeyCount; ++i)
        ws.functionKeys[size_t(i)] = store.functionKey(i);
    ws.history = store.history();
}

bool SaveSettings(const QWidget &mainWindow, Workspace &ws)
{
    SettingsStore store;

    store.writeString(Setting::Version, VersionText());
    const int state = stateOf(mainWindow);
    store.writeInt(Setting::State, state);
    // Only a normal window says where the next normal run should stand.
    if (state == 0) {
        store.writeFloat(Setting::Top, pixelsToTwips(mainWindow.pos().y()));
        store.writeFloat(Setting::Left, pixelsToTwips(mainWindow.pos().x()));
        store.writeFloat(Setting::Width, pixelsToTwips(mainWindow.width()));
        store.writeFloat(Setting::Height, pixelsToTwips(mainWindow.height()));
    }
    for (const OptionSetting &o : kOptionSettings)
        store.writeBool(o.setting, ws.options.isChecked(o.option));
    store.writeInt(Setting::Backcolor, ws.backColor);

    for (int k = 0; k < PreviousKindCount; ++k)
        store.setList(PreviousKind(k), ws.previous.lists[size_t(k)]);

    store.setFont(FontSection::Html, ws.fonts.html);
    store.setFont(FontSection::Text, ws.fonts.text);
    store.setFont(FontSection::Comment, ws.fonts.comment);
    for (int i = 0; i < FunctionKeyCount; ++i)
        store.setFunctionKey(i, ws.functionKeys[size_t(i)]);
    store.setHistory(ws.history);

    if (store.sync())
        return true;
    ws.MsgBox(QStringLiteral("The settings could not be saved in %1.").arg(store.fileName()), MsgStyle::Exclamation);
    return false;
}

ClassFonts LoadFontSettings()
{
    const SettingsStore store;
    return {store.font(FontSection::Text), store.font(FontSection::Html), store.font(FontSection::Comment)};
}

} // namespace pw
