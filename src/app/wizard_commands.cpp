#include "app/commands.h"

#include "app/command_table.h"
#include "core/main_window.h"
#include "wizards/anchor_wizard.h"
#include "wizards/base_font_wizard.h"
#include "wizards/body_wizard.h"
#include "wizards/char_map.h"
#include "wizards/form_wizard.h"
#include "wizards/frame_wizard.h"
#include "wizards/hyperlink_wizard.h"
#include "wizards/image_wizard.h"
#include "wizards/list_wizard.h"
#include "wizards/rainbow_font.h"
#include "wizards/rule_wizard.h"
#include "wizards/table_wizard.h"

namespace pw {

void RegisterWizardCommands(CommandTable &table, const CommandContext &context)
{
    Workspace &ws = context.workspace;
    frmMDIMain *main = &context.main;
    const auto both = [&table](const QString &item, Button button, std::function<void(frmDoc &)> handler) {
        table.setDocumentHandler(item, handler);
        table.setDocumentHandler(buttonKey(button), std::move(handler));
    };
    both(QStringLiteral("mnuHTMLName"), Button::AnchorName, [&ws, main](frmDoc &doc) { ShowAnchorWizard(ws, doc, main); });
    table.setDocumentHandler(QStringLiteral("mnuHRDefine"), [&ws, main](frmDoc &doc) { ShowRuleWizard(ws, doc, main); });
    table.setDocumentHandler(QStringLiteral("mnuFontBaseFont"), [&ws, main](frmDoc &) { ShowBaseFontWizard(ws, main); });
    both(QStringLiteral("mnuTableDesign"), Button::Table, [&ws, main](frmDoc &) { ShowTableWizard(ws, main); });
    both(QStringLiteral("mnuDesignFrame"), Button::Frame, [&ws, main](frmDoc &) { ShowFrameWizard(ws, main); });
    both(QStringLiteral("mnuListDesign"), Button::List, [&ws, main](frmDoc &) { ShowListWizard(ws, main); });

    // Each Form item opens the wizard on its kind; Define Form and imgForm on the whole form.
    const auto form = [&ws, main](FormKind kind) {
        return [&ws, main, kind](frmDoc &) { ShowFormWizard(ws, main, kind); };
    };
    both(QStringLiteral("mnuFormForm"), Button::Form, form(FormKind::Form));
    table.setDocumentHandler(QStringLiteral("mnuFormDefine"), form(FormKind::Form));
    static const std::pair<const char *, FormKind> items[] = {
        {"mnuFormCheckbox", FormKind::Checkbox}, {"mnuFormHidden", FormKind::Hidden},
        {"mnuFormOption", FormKind::Option},     {"mnuFormPassword", FormKind::Password},
        {"mnuFormRadio", FormKind::Radio},       {"mnuFormReset", FormKind::Reset},
        {"mnuFormSelect", FormKind::Select},     {"mnuFormSubmit", FormKind::Submit},
        {"mnuFormText", FormKind::Text},         {"mnuFormTextarea", FormKind::Textarea},
    };
    for (const auto &[item, kind] : items)
        table.setDocumentHandler(QLatin1String(item), form(kind));
    both(QStringLiteral("mnuHTMLHREF"), Button::HyperLink, [&ws, main](frmDoc &) { ShowHyperLinkWizard(ws, main); });
    both(QStringLiteral("mnuHTMLImage"), Button::Image, [&ws, main](frmDoc &doc) { ShowImageWizard(ws, doc, main); });
    both(QStringLiteral("mnuHTMLBodyBackground"), Button::Body, [&ws, main](frmDoc &) { ShowBodyWizard(ws, main); });
    both(QStringLiteral("mnuCharMap"), Button::Char, [&ws, main](frmDoc &) { ShowCharMap(ws, main); });
    table.setDocumentHandler(QStringLiteral("mnuFontRainbow"), [&ws, main](frmDoc &) { ShowRainbowWizard(ws, main); });
}

} // namespace pw
