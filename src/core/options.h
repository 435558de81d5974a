#pragma once

#include <QObject>

#include <array>

namespace pw {

// The checked options of the Options menu. The menus of the main window and of every document show
// this one state.
enum class Option { Highlight, Toolbar, UHTML, LockFiles, SiteMap, MaximizeDocs, AutoSave, AddTemplate };
constexpr int OptionCount = 8;

// The menu item of an option ("mnuOptionHTML" for Highlight).
const char *optionItemName(Option option);

class Options : public QObject
{
    Q_OBJECT

public:
    explicit Options(QObject *parent = nullptr);

    bool isChecked(Option option) const { return m_checked[size_t(option)]; }
    void setChecked(Option option, bool checked);
    void toggle(Option option) { setChecked(option, !isChecked(option)); }

Q_SIGNALS:
    void changed(pw::Option option, bool checked);

private:
    std::array<bool, OptionCount> m_checked;
};

} // namespace pw
