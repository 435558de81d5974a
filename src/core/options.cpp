#include "core/options.h"

namespace pw {

const char *optionItemName(Option option)
{
    switch (option) {
    case Option::Highlight: return "mnuOptionHTML";
    case Option::Toolbar: return "mnuOptionToolbar";
    case Option::UHTML: return "mnuOptionUHTML";
    case Option::LockFiles: return "mnuOptionLockFiles";
    case Option::SiteMap: return "mnuOptionSiteMap";
    case Option::MaximizeDocs: return "mnuOptionMaxDocs";
    case Option::AutoSave: return "mnuOptionAutosave";
    case Option::AddTemplate: return "mnuOptionBlankFile";
    }
    return "";
}

// All off until the settings (or their first-run values) are read.
Options::Options(QObject *parent) : QObject(parent), m_checked{}
{
}

void Options::setChecked(Option option, bool checked)
{
    if (m_checked[size_t(option)] == checked)
        return;
    m_checked[size_t(option)] = checked;
    Q_EMIT changed(option, checked);
}

} // namespace pw
