#include "app/commands.h"

#include "app/command_table.h"
#include "core/main_window.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "platform/platform.h"
#include "site/browser_test.h"
#include "site/resource_view.h"
#include "site/site_map.h"

namespace pw {

void RegisterSiteCommands(CommandTable &table, const CommandContext &context)
{
    Workspace &ws = context.workspace;
    frmMDIMain *main = &context.main;
    for (const QString &name : {QStringLiteral("mnuFileResources"), buttonKey(Button::Resources)})
        table.setDocumentHandler(name, [&ws, main](frmDoc &) { ShowResources(ws, main); });
    table.setDocumentHandler(buttonKey(Button::Test), [&ws, main](frmDoc &) { TestInBrowser(ws, main); });
    table.setHandler(QStringLiteral("mnuOptionSelectBrowser"), [&ws](frmDoc *) { SelectBrowser(ws); });
    table.setHandler(QLatin1String(optionItemName(Option::SiteMap)), [&ws](frmDoc *) {
        ws.options.toggle(Option::SiteMap);
        ws.status.ClearStatusText();
    });
    // The option, however it changes (the menu, the settings at the start, the dock's close box),
    // decides whether the dock is there.
    QObject::connect(&ws.options, &Options::changed, main, [&ws, main](Option option, bool checked) {
        if (option != Option::SiteMap)
            return;
        if (!checked) {
            UnloadSiteMap(*main);
        } else if (main->isVisible()) {
            ShowSiteMap(ws, *main);
        } else {
            // The settings are read before the window shows: the dock and its boxes come once the
            // start is over and the window stands behind them.
            ws.platform.idle().runWhenIdle([&ws, main] {
                if (ws.options.isChecked(Option::SiteMap) && main->isVisible())
                    ShowSiteMap(ws, *main);
            });
        }
    });
}

} // namespace pw
