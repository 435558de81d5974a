#include "site/site_find_window.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/long_pass.h"
#include "core/workspace.h"
#include "files/open_document.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMultiHash>
#include <QPushButton>

namespace pw {

namespace {

enum HitRole { PathRole = Qt::UserRole, LineRole, ColumnRole, LengthRole };

// The open documents by their file's name, so that a site file is only looked up on disk
// (its real path) when an open one has the same name.
class OpenDocuments
{
public:
    explicit OpenDocuments(Workspace &workspace)
    {
        for (const int slot : workspace.slots.openSlots())
            if (frmDoc *document = workspace.slots.document(slot); document && !document->isUntitled())
                m_byName.insert(QFileInfo(document->state().path()).fileName(), document);
    }
    std::optional<QString> textOf(const QString &path) const
    {
        if (m_byName.isEmpty())
            return std::nullopt;
        const QFileInfo info(path);
        const auto named = m_byName.values(info.fileName());
        if (named.isEmpty())
            return std::nullopt;
        const QString real = info.canonicalFilePath();
        for (frmDoc *document : named)
            if (QFileInfo(document->state().path()).canonicalFilePath() == real)
                return document->Text->Text();
        return std::nullopt;
    }

private:
    QMultiHash<QString, frmDoc *> m_byName;
};

} // namespace

frmSiteFind::frmSiteFind(Workspace &workspace, const QString &folder, QWidget *parent)
    : QDialog(parent, Qt::Tool), m_workspace(workspace)
{
    setObjectName(QStringLiteral("frmSiteFind"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto *label = new QLabel(QStringLiteral("Find What?:"), this);
    label->setObjectName(QStringLiteral("lblSiteFind"));
    tbSiteFind = new QLineEdit(this);
    tbSiteFind->setObjectName(QStringLiteral("tbSiteFind"));
    label->setBuddy(tbSiteFind);
    chkCase = new QCheckBox(QStringLiteral("- Match case"), this);
    chkCase->setObjectName(QStringLiteral("chkCase"));
    cmdSiteFind = new QPushButton(QStringLiteral("&Find"), this);
    cmdSiteFind->setObjectName(QStringLiteral("cmdSiteFind"));
    cmdSiteFind->setDefault(true);
    cmdClose = new QPushButton(QStringLiteral("&Close"), this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    lblSiteHits = new QLabel(this);
    lblSiteHits->setObjectName(QStringLiteral("lblSiteHits"));
    lstSiteHits = new QListWidget(this);
    lstSiteHits->setObjectName(QStringLiteral("lstSiteHits"));
    lstSiteHits->setMinimumSize(480, 240);

    auto *layout = new QGridLayout(this);
    layout->addWidget(label, 0, 0);
    layout->addWidget(tbSiteFind, 1, 0);
    layout->addWidget(chkCase, 2, 0);
    layout->addWidget(cmdSiteFind, 1, 1);
    layout->addWidget(cmdClose, 2, 1);
    layout->addWidget(lblSiteHits, 3, 0, 1, 2);
    layout->addWidget(lstSiteHits, 4, 0, 1, 2);
    layout->setRowStretch(4, 1);

    connect(cmdSiteFind, &QPushButton::clicked, this, &frmSiteFind::cmdSiteFind_Click);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::close);
    // Closed, it lingers until deleted; the next Find in Files makes a new one.
    connect(this, &QDialog::finished, this, [this] { setObjectName(QString()); });
    connect(lstSiteHits, &QListWidget::itemDoubleClicked, this, &frmSiteFind::lstSiteHits_Activated);
    // Enter on a hit opens it; a shortcut, so the default button does not search again as well.
    auto *openHit = new QAction(lstSiteHits);
    openHit->setObjectName(QStringLiteral("actOpenHit"));
    openHit->setShortcuts({QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)});
    openHit->setShortcutContext(Qt::WidgetShortcut);
    lstSiteHits->addAction(openHit);
    connect(openHit, &QAction::triggered, this, [this] { lstSiteHits_Activated(lstSiteHits->currentItem()); });
    setFolder(folder);
}

void frmSiteFind::setFolder(const QString &folder)
{
    m_folder = folder;
    setWindowTitle(QStringLiteral("Find in Files - ") + folder);
}

void frmSiteFind::cmdSiteFind_Click()
{
    const QString target = tbSiteFind->text();
    lstSiteHits->clear();
    lblSiteHits->clear();
    if (target.isEmpty())
        return;
    const OpenDocuments open(m_workspace);
    SiteSearchResult result;
    {
        LongPass pass(m_workspace, QStringLiteral("Searching ") + m_folder + QStringLiteral("..."));
        bool stopped = false;
        const QStringList files = SiteTextFiles(m_folder, [&] { return stopped = pass.escapePressed(); });
        if (stopped)
            result.stopped = true;
        else
            result = SearchSiteFiles(
                files, target, chkCase->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive,
                [&open](const QString &path) { return open.textOf(path); },
                [&pass](qint64 done, qint64 total) {
                    pass.step(done, total);
                    return pass.escapePressed();
                });
    }
    showResult(result, int(target.size()));
}

void frmSiteFind::showResult(const SiteSearchResult &result, int targetLength)
{
    const QDir base(m_folder);
    lstSiteHits->setUpdatesEnabled(false);
    for (const SiteHit &hit : result.hits) {
        auto *item = new QListWidgetItem(
            QStringLiteral("%1:%2: %3").arg(base.relativeFilePath(hit.path)).arg(hit.line).arg(hit.lineText),
            lstSiteHits);
        item->setData(PathRole, hit.path);
        item->setData(LineRole, hit.line);
        item->setData(ColumnRole, hit.column);
        item->setData(LengthRole, targetLength);
    }
    lstSiteHits->setUpdatesEnabled(true);
    if (lstSiteHits->count())
        lstSiteHits->setCurrentRow(0);
    lblSiteHits->setText(SiteSearchSummary(result));
}

void frmSiteFind::lstSiteHits_Activated(QListWidgetItem *item)
{
    if (!item)
        return;
    frmDoc *document = OpenFromSiteMap(m_workspace, item->data(PathRole).toString());
    if (!document)
        return;
    // The line is looked up in the text as it is now; a line since removed leaves the caret at the end.
    EditingSurface &text = *document->Text;
    const int length = text.TextLength();
    const int position = qMin(text.lineStart(item->data(LineRole).toInt() - 1) + item->data(ColumnRole).toInt(), length);
    text.setSelStart(position);
    text.setSelLength(qMin(item->data(LengthRole).toInt(), length - position));
    m_workspace.FocusCurrentDocument();
}

frmSiteFind *ShowSiteFind(Workspace &workspace, const QString &folder, QWidget *parent)
{
    frmSiteFind *form = parent ? parent->findChild<frmSiteFind *>(QStringLiteral("frmSiteFind"),
                                                                  Qt::FindDirectChildrenOnly)
                               : nullptr;
    if (!form) {
        form = new frmSiteFind(workspace, folder, parent);
        const frmDoc *document = workspace.current();
        if (document && document->Text->SelLength() >= 1 && !document->Text->SelText().contains(QLatin1Char('\n')))
            form->tbSiteFind->setText(document->Text->SelText());
    } else {
        form->setFolder(folder);
    }
    form->show();
    form->raise();
    form->activateWindow();
    form->tbSiteFind->selectAll();
    form->tbSiteFind->setFocus(Qt::ActiveWindowFocusReason);
    return form;
}

} // namespace pw
