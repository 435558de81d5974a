#include "app/command_table.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/options.h"
#include "core/workspace.h"

#include <QAction>
#include <QFile>
#include <QImageReader>
#include <QMenu>
#include <QPainter>
#include <QToolBar>

namespace pw {

void CommandTable::setHandler(const QString &name, Handler handler)
{
    m_handlers.insert(name, std::move(handler));
}

void CommandTable::setDocumentHandler(const QString &name, std::function<void(frmDoc &)> handler)
{
    setHandler(name, [handler = std::move(handler)](frmDoc *document) {
        if (document)
            handler(*document);
    });
}

void CommandTable::run(const QString &name, frmDoc *document) const
{
    if (auto it = m_handlers.constFind(name); it != m_handlers.constEnd())
        (*it)(document);
}

static bool isOptionItem(const QString &name, Option *option)
{
    for (int i = 0; i < OptionCount; ++i) {
        if (name == QLatin1String(optionItemName(Option(i)))) {
            *option = Option(i);
            return true;
        }
    }
    return false;
}

QList<QMenu *> CommandTable::buildMenus(const QList<MenuRow> &rows, QWidget *owner, frmDoc *document,
                                        Options &shared) const
{
    QList<QMenu *> top;
    QList<QMenu *> stack; // the open menu at each depth
    Options *options = &shared;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const MenuRow &row = rows[i];
        const bool hasChildren = i + 1 < rows.size() && rows[i + 1].depth > row.depth;
        stack.resize(row.depth);
        QMenu *parent = row.depth > 0 ? stack.value(row.depth - 1) : nullptr;

        if (row.name.startsWith(QLatin1Char('-'))) {
            QAction *separator = parent->addSeparator();
            separator->setObjectName(row.name.mid(1));
            // The previous-file items show once the list has entries.
            separator->setVisible(row.name != QLatin1String("-mnuFileSep1"));
            continue;
        }
        if (hasChildren) {
            auto *menu = new QMenu(row.caption, parent ? static_cast<QWidget *>(parent) : owner);
            menu->setObjectName(row.name);
            menu->menuAction()->setObjectName(row.name);
            if (parent)
                parent->addMenu(menu);
            else
                top.append(menu);
            stack.append(menu);
            continue;
        }
        auto *action = new QAction(row.caption, parent);
        action->setObjectName(row.name);
        if (!row.shortcut.isEmpty())
            action->setShortcut(QKeySequence(row.shortcut));
        action->setShortcutContext(Qt::WindowShortcut);
        parent->addAction(action);
        if (row.name.startsWith(QLatin1String("mnuFilePrevious(")))
            action->setVisible(false);

        Option option = Option::Highlight;
        if (options && isOptionItem(row.name, &option)) {
            action->setCheckable(true);
            action->setChecked(options->isChecked(option));
            QObject::connect(options, &Options::changed, action, [action, option](Option o, bool on) {
                if (o == option)
                    action->setChecked(on);
            });
        }
        if (!hasHandler(row.name)) {
            action->setEnabled(false);
            continue;
        }
        const QString name = row.name;
        const bool isOption = options && isOptionItem(row.name, &option);
        QObject::connect(action, &QAction::triggered, action, [this, name, document, action, isOption, option, options] {
            run(name, document);
            // The shared option state, not the item's own click, decides the check mark.
            if (isOption)
                action->setChecked(options->isChecked(option));
        });
    }
    return top;
}

// The last resort, where SVG can't be read: the button's initials on a tile.
static QIcon drawnIcon(const QString &text)
{
    QPixmap pixmap(24, 24);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.setBrush(QColor(0xE8, 0xEE, 0xF6));
    p.setPen(QColor(0x4A, 0x6A, 0x94));
    p.drawRoundedRect(QRectF(1.5, 1.5, 21, 21), 4, 4);
    QFont f = p.font();
    f.setPixelSize(10);
    f.setBold(true);
    p.setFont(f);
    QString initials;
    for (const QString &word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        if (initials.size() < 2)
            initials += word[0].toUpper();
    p.drawText(QRect(0, 0, 24, 24), Qt::AlignCenter, initials);
    return QIcon(pixmap);
}

// The button's own picture, shipped with the program, for a theme that lacks the button's icon.
static QIcon bundledIcon(const ButtonRow &row)
{
    static const bool svgReadable = QImageReader::supportedImageFormats().contains("svg");
    const QString file = QStringLiteral(":/icons/toolbar/") + row.key + QStringLiteral(".svg");
    if (svgReadable && QFile::exists(file))
        return QIcon(file);
    return drawnIcon(row.toolTip);
}

void CommandTable::buildToolbars(frmMDIMain &main) const
{
    const auto fill = [&](QToolBar *bar, const QList<ButtonRow> &rows) {
        for (const ButtonRow &row : rows) {
            if (row.key == QLatin1String("-")) {
                bar->addSeparator();
                continue;
            }
            auto *action = new QAction(QIcon::fromTheme(row.themeIcon, bundledIcon(row)), row.toolTip, &main);
            action->setObjectName(row.key);
            action->setToolTip(row.toolTip);
            action->setStatusTip(row.description);
            bar->addAction(action);
            if (!hasHandler(row.key)) {
                action->setEnabled(false);
                continue;
            }
            const QString key = row.key;
            Workspace *ws = &main.workspace();
            QObject::connect(action, &QAction::triggered, action, [this, key, ws] {
                frmDoc *current = ws->AnyDocumentOpen() ? ws->current() : nullptr;
                if (current)
                    current->Text->SetFocus();
                run(key, current);
            });
        }
    };
    fill(main.Toolbar1, toolbar1Rows());
    fill(main.Toolbar2, toolbar2Rows());
}

QAction *CommandTable::button(const frmMDIMain &main, Button button)
{
    return main.button(buttonKey(button));
}

QString buttonKey(Button button)
{
    static const char *const keys[ButtonCount] = {
        "imgFileNew", "imgFileOpen", "imgFileSave", "imgEditCopy", "imgEditCut", "imgEditPaste", "imgUndo",
        "imgSpell", "imgFind", "imgReplace", "imgHelp", "imgExit", "imgResources", "imgBody", "imgHyperLink",
        "imgAnchorName", "imgImage", "imgChar", "imgList", "imgTable", "imgFrame", "imgForm", "imgTest",
    };
    return QLatin1String(keys[int(button)]);
}

} // namespace pw
