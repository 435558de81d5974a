#include "markup/costumize_dialog.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/status_line.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "platform/dialog_look.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace pw {

namespace {

template <typename T>
T *named(T *widget, const QString &name)
{
    widget->setObjectName(name);
    return widget;
}

} // namespace

frmCostumize::frmCostumize(Workspace &workspace, QWidget *parent) : QDialog(parent), m_workspace(workspace)
{
    setObjectName(QStringLiteral("frmCostumize"));
    SetDialogLook(*this);
    setWindowTitle(QStringLiteral("Customize Function Keys"));

    Frame1 = named(new QGroupBox(QStringLiteral("Function Keys"), this), QStringLiteral("Frame1"));
    auto *keys = new QGridLayout(Frame1);
    auto *keyGroup = new QButtonGroup(this);
    for (int i = 0; i < 12; ++i) {
        opKey[size_t(i)] = named(new QRadioButton(Frame1), QStringLiteral("opKey(%1)").arg(i));
        keys->addWidget(opKey[size_t(i)], i % 6, i / 6);
        keyGroup->addButton(opKey[size_t(i)], i);
        showKeyCaption(i);
    }

    Label1 = named(new QLabel(QStringLiteral("Front tag:"), this), QStringLiteral("Label1"));
    tbFrontTag = named(new QLineEdit(this), QStringLiteral("tbFrontTag"));
    Label2 = named(new QLabel(QStringLiteral("Following Tag:"), this), QStringLiteral("Label2"));
    tbFollowingTag = named(new QLineEdit(this), QStringLiteral("tbFollowingTag"));
    for (QLineEdit *box : {tbFrontTag, tbFollowingTag}) {
        box->setMaxLength(FunctionKeyRecord::TagWidth);
        box->setMinimumWidth(box->fontMetrics().averageCharWidth() * (FunctionKeyRecord::TagWidth + 2));
    }
    Label1->setBuddy(tbFrontTag);
    Label2->setBuddy(tbFollowingTag);
    chkFrontCRLF = named(new QCheckBox(QStringLiteral("Followed with CRLF"), this), QStringLiteral("chkFrontCRLF"));
    chkFollowCRLF = named(new QCheckBox(QStringLiteral("Preceed with CRLF"), this), QStringLiteral("chkFollowCRLF"));

    m_replace = new QButtonGroup(this);
    opReplace[0] = named(new QRadioButton(QStringLiteral("Replace Selected Text"), this), QStringLiteral("opReplace(0)"));
    opReplace[1] = named(new QRadioButton(QStringLiteral("Preserve Selected Text"), this), QStringLiteral("opReplace(1)"));
    Frame2 = named(new QGroupBox(QStringLiteral("Cursor Position"), this), QStringLiteral("Frame2"));
    auto *cursorLayout = new QVBoxLayout(Frame2);
    m_cursor = new QButtonGroup(this);
    const char *const places[] = {"Front", "Middle", "Behind"};
    for (int i = 0; i < 3; ++i) {
        opCursorPlace[size_t(i)] = named(new QRadioButton(QLatin1String(places[i]), Frame2), QStringLiteral("opCursorPlace(%1)").arg(i));
        cursorLayout->addWidget(opCursorPlace[size_t(i)]);
        m_cursor->addButton(opCursorPlace[size_t(i)], i);
    }
    for (int i = 0; i < 2; ++i)
        m_replace->addButton(opReplace[size_t(i)], i);
    Command1 = named(new QPushButton(QStringLiteral("&OK"), this), QStringLiteral("Command1"));
    Command1->setDefault(true);

    auto *fields = new QGridLayout;
    fields->addWidget(Label1, 0, 0);
    fields->addWidget(tbFrontTag, 0, 1);
    fields->addWidget(chkFrontCRLF, 1, 1);
    fields->addWidget(Label2, 2, 0);
    fields->addWidget(tbFollowingTag, 2, 1);
    fields->addWidget(chkFollowCRLF, 3, 1);
    fields->addWidget(opReplace[0], 4, 1);
    fields->addWidget(opReplace[1], 5, 1);
    fields->addWidget(Frame2, 6, 1);
    auto *layout = new QGridLayout(this);
    layout->addWidget(Frame1, 0, 0, 2, 1);
    layout->addLayout(fields, 0, 1);
    layout->addWidget(Command1, 1, 1, Qt::AlignRight | Qt::AlignBottom);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    // Tab goes down the fields as they stand.
    QWidget *order[] = {opKey[0], tbFrontTag, chkFrontCRLF, tbFollowingTag, chkFollowCRLF, opReplace[0], opCursorPlace[0], Command1};
    for (size_t i = 0; i + 1 < std::size(order); ++i)
        setTabOrder(order[i], order[i + 1]);

    for (QWidget *control : std::initializer_list<QWidget *>{tbFrontTag, tbFollowingTag, chkFrontCRLF, chkFollowCRLF,
                                                              opReplace[0], opReplace[1], opCursorPlace[0],
                                                              opCursorPlace[1], opCursorPlace[2]})
        control->installEventFilter(this);

    Form_Load();
    connect(keyGroup, &QButtonGroup::idClicked, this, &frmCostumize::opKey_Click);
    // The live writes into the record on show.
    connect(chkFrontCRLF, &QCheckBox::toggled, this,
            [this](bool on) { m_workspace.functionKeys[size_t(CurrentKey)].FCRLF = on ? True : False; });
    connect(chkFollowCRLF, &QCheckBox::toggled, this,
            [this](bool on) { m_workspace.functionKeys[size_t(CurrentKey)].PCRLF = on ? True : False; });
    connect(m_replace, &QButtonGroup::idToggled, this, [this](int index, bool on) {
        if (on)
            m_workspace.functionKeys[size_t(CurrentKey)].PreserveText = index != 0;
    });
    connect(m_cursor, &QButtonGroup::idToggled, this, [this](int index, bool on) {
        if (on)
            m_workspace.functionKeys[size_t(CurrentKey)].CursorPosition = qint16(index);
    });
    connect(Command1, &QPushButton::clicked, this, &frmCostumize::Command1_Click);
}

void frmCostumize::showKeyCaption(int index)
{
    const QString name = QStringLiteral("F%1").arg(index + 1);
    opKey[size_t(index)]->setText(m_workspace.functionKeys[size_t(index)].Active ? name + QStringLiteral(" - in use") : name);
}

void frmCostumize::Form_Load()
{
    opKey[0]->setChecked(true);
    opReplace[1]->setChecked(true);
    opCursorPlace[1]->setChecked(true);
    if (m_workspace.functionKeys[0].Active)
        ShowKey(0);
    CurrentKey = 0;
}

void frmCostumize::opKey_Click(int index)
{
    CurrentKey = index;
    ShowKey(index);
    tbFrontTag->setFocus();
}

void frmCostumize::ShowKey(int index)
{
    const FunctionKeyRecord key = m_workspace.functionKeys[size_t(index)];
    tbFrontTag->setText(TrimTrailing(key.FrontTag));
    tbFollowingTag->setText(TrimTrailing(key.FollowTag));
    chkFrontCRLF->setChecked(key.FCRLF != 0);
    chkFollowCRLF->setChecked(key.PCRLF != 0);
    opReplace[key.PreserveText ? 1 : 0]->setChecked(true);
    opCursorPlace[size_t(qBound(0, int(key.CursorPosition), 2))]->setChecked(true);
}

void frmCostumize::tbFrontTag_LostFocus()
{
    FunctionKeyRecord &key = m_workspace.functionKeys[size_t(CurrentKey)];
    const QString front = TrimTrailing(tbFrontTag->text());
    if (front.isEmpty()) {
        key = FunctionKeyRecord{};
        key.FrontTag = FixedWidthText(QString());
        key.FollowTag = FixedWidthText(QString());
        key.PreserveText = true;
        // The defaults come back, which writes them to the record as well.
        tbFollowingTag->clear();
        chkFrontCRLF->setChecked(false);
        chkFollowCRLF->setChecked(false);
        opReplace[1]->setChecked(true);
        opCursorPlace[1]->setChecked(true);
        key.CursorPosition = 1;
    } else {
        key.FrontTag = FixedWidthText(front);
        key.Active = true;
    }
    showKeyCaption(CurrentKey);
    m_workspace.status.ClearStatusText();
}

void frmCostumize::tbFollowingTag_LostFocus()
{
    m_workspace.functionKeys[size_t(CurrentKey)].FollowTag = FixedWidthText(tbFollowingTag->text());
    m_workspace.status.ClearStatusText();
}

void frmCostumize::lostFocusOf(QObject *control)
{
    if (control == tbFrontTag)
        tbFrontTag_LostFocus();
    else if (control == tbFollowingTag)
        tbFollowingTag_LostFocus();
    else
        m_workspace.status.ClearStatusText();
}

bool frmCostumize::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        static const std::pair<const char *, const char *> help[] = {
            {"tbFrontTag", "Erase Front Tag to deactivate the function key."},
            {"chkFrontCRLF", "Force a Carriage Return after the tag is placed."},
            {"chkFollowCRLF", "Force a Carriage Return before the tag is placed."},
            {"opReplace(0)", "If Preserve, selected text is placed after the Front tag and before the Following Tag."},
            {"opReplace(1)", "If Preserve, selected text is placed after the Front tag and before the Following Tag."},
            {"opCursorPlace(0)", "The cursor will be placed in front of the front tag."},
            {"opCursorPlace(1)", "The cursor will be placed between the two tags, and after any perserved texted."},
            {"opCursorPlace(2)", "the cursor will be placed after the following tag."},
        };
        for (const auto &[name, text] : help) {
            if (watched->objectName() == QLatin1String(name))
                m_workspace.status.SetStatusText(QLatin1String(text));
        }
    } else if (event->type() == QEvent::FocusOut && !m_unloaded) {
        lostFocusOf(watched);
    }
    return QDialog::eventFilter(watched, event);
}

void frmCostumize::Command1_Click()
{
    m_workspace.status.ClearStatusText();
    Form_Unload();
}

void frmCostumize::reject()
{
    Form_Unload(); // Escape is OK here: every change is already made
}

void frmCostumize::closeEvent(QCloseEvent *event)
{
    Form_Unload();
    event->accept();
}

void frmCostumize::Form_Unload()
{
    if (m_unloaded)
        return;
    // What the focused box holds is kept, as leaving it would.
    if (QWidget *focused = focusWidget())
        lostFocusOf(focused);
    m_unloaded = true;
    hide();
    m_workspace.FocusCurrentDocument();
    deleteLater();
}

frmCostumize *ShowCostumize(Workspace &workspace, QWidget *parent)
{
    auto *dialog = new frmCostumize(workspace, parent);
    ShowCentred(*dialog);
    return dialog;
}

} // namespace pw
