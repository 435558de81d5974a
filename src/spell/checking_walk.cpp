#include "spell/checking_walk.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/resumable_walk.h"
#include "core/status_line.h"
#include "core/workspace.h"
#include "platform/dialog_look.h"
#include "platform/message_box.h"
#include "spell/soundex.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>


namespace pw {

namespace {

bool isWordChar(QChar c)
{
    const QChar u = c.toUpper();
    return (u >= QLatin1Char('A') && u <= QLatin1Char('Z')) || (u >= QLatin1Char('0') && u <= QLatin1Char('9'));
}

QPushButton *makeButton(QWidget *parent, const char *name, const QString &caption, bool enabled)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(QLatin1String(name));
    button->setEnabled(enabled);
    button->setAutoDefault(false);
    return button;
}

// A piece of the surface's text around the walk, read again when the walk leaves it: stepping
// from word to word then neither copies the whole text nor moves the selection.
class TextWindow
{
public:
    explicit TextWindow(const EditingSurface &surface) : m_surface(surface) {}

    // The run from pos up to, not including, the next separator or the end of the text.
    QString runAt(int pos)
    {
        const int length = m_surface.TextLength();
        for (int size = Chunk;; size *= 2) {
            if (!holds(pos))
                load(pos, size);
            const qsizetype from = pos - m_start;
            qsizetype i = from;
            while (i < m_text.size() && !frmSpellChecker::Separators.contains(m_text.at(i)))
                ++i;
            if (i < m_text.size() || m_start + m_text.size() >= length)
                return m_text.mid(from, i - from);
            load(pos, size * 2); // a run longer than the window
        }
    }
    QChar charAt(int pos)
    {
        if (!holds(pos) || pos - m_start >= m_text.size())
            load(pos, Chunk);
        return pos - m_start < m_text.size() ? m_text.at(pos - m_start) : QChar();
    }
    void clear()
    {
        m_text.clear();
        m_start = -1;
    }

private:
    static constexpr int Chunk = 4096;

    bool holds(int pos) const { return m_start >= 0 && pos >= m_start && pos < m_start + m_text.size(); }
    void load(int pos, int size)
    {
        m_start = pos;
        m_text = m_surface.Mid(pos, size);
    }

    const EditingSurface &m_surface;
    int m_start = -1;
    QString m_text;
};

} // namespace

// The walk over the text between tags: from each ">" to the next "<", run by run. It stops at a
// run whose word the store doesn't know, showing it selected, and goes on from there when resumed.
class frmSpellChecker::Walk : public ResumableWalk
{
public:
    Walk(frmSpellChecker &form, frmDoc &document)
        : m_form(form), m_document(&document), m_text(document.Text), m_window(*document.Text)
    {
    }

    // The run the walk stands on, and where it goes on after the answer.
    int runStart = 0;
    int runLength = 0;
    int resumeAt = 0;
    EditingSurface *surface() const { return m_text; }

protected:
    void begin() override
    {
        m_window.clear();
        m_atStop = false;
        m_text->setSelStart(0);
        m_closePos = m_text->Find(QStringLiteral(">"), 0, -1, EditingSurface::NoHighlight);
        if (m_closePos != -1)
            enterStretch();
    }

    Step advance() override
    {
        if (!m_text)
            return Step::Done;
        if (std::exchange(m_atStop, false)) {
            // A change moves the rest of the stretch by what it added or took away.
            m_openPos += m_text->TextLength() - m_lengthAtStop;
            m_window.clear();
            stepOverSeparator();
        }
        while (m_closePos != -1) {
            while (m_pos < m_openPos && m_pos < m_text->TextLength()) {
                const QString raw = m_window.runAt(m_pos);
                QString word = ExtractWord(raw);
                m_form.CurrentWord = word;
                m_form.CurrentWordLength = qint16(word.size());
                runStart = m_pos;
                runLength = int(raw.size());
                resumeAt = m_pos + runLength;
                if (!word.isEmpty() && !word.at(0).isDigit() && !raw.contains(QLatin1Char('&'))) {
                    QString result;
                    m_form.CheckWord(word, result);
                    if (!result.isEmpty()) {
                        // The selection shows the run, as Span gives it.
                        m_text->setSelStart(runStart);
                        m_text->setSelLength(runLength);
                        m_text->ensureCursorVisible();
                        m_lengthAtStop = m_text->TextLength();
                        m_atStop = true;
                        return Step::WaitForUser;
                    }
                }
                stepOverSeparator();
            }
            m_closePos = m_text->Find(QStringLiteral(">"), m_openPos, -1, EditingSurface::NoHighlight);
            if (m_closePos != -1)
                enterStretch();
        }
        m_text->setSelLength(0);
        return Step::Done;
    }

private:
    void enterStretch()
    {
        m_openPos = m_text->Find(QStringLiteral("<"), m_closePos + 1, -1, EditingSurface::NoHighlight);
        if (m_openPos == -1)
            m_openPos = m_text->TextLength();
        m_pos = m_closePos + 1;
    }
    // A line end is one separator of two characters.
    void stepOverSeparator() { m_pos = resumeAt + (m_window.charAt(resumeAt) == QLatin1Char('\r') ? 2 : 1); }

    frmSpellChecker &m_form;
    QPointer<frmDoc> m_document;
    QPointer<EditingSurface> m_text;
    TextWindow m_window;
    int m_closePos = -1;
    int m_openPos = 0;
    int m_pos = 0;
    int m_lengthAtStop = 0;
    bool m_atStop = false;
};

const QString frmSpellChecker::Separators = QStringLiteral(" ,;:.?!<\r\n\t");

frmSpellChecker::frmSpellChecker(Workspace &workspace, frmDoc &document, QWidget *parent)
    : QDialog(parent), m_workspace(workspace), m_document(&document),
      m_walk(std::make_unique<Walk>(*this, document))
{
    SetDialogLook(*this);
    setObjectName(QStringLiteral("frmSpellChecker"));
    setWindowTitle(QStringLiteral("Spell Checker"));
    setModal(false);
    setAttribute(Qt::WA_DeleteOnClose);

    Label1 = new QLabel(QStringLiteral("Found:"), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    Text1 = new QLineEdit(this);
    Text1->setObjectName(QStringLiteral("Text1"));
    Label2 = new QLabel(QStringLiteral("Suggestions:"), this);
    Label2->setObjectName(QStringLiteral("Label2"));
    lstMatches = new QListWidget(this);
    lstMatches->setObjectName(QStringLiteral("lstMatches"));
    Label1->setBuddy(Text1);
    Label2->setBuddy(lstMatches);

    Command1 = makeButton(this, "Command1", QStringLiteral("Check"), true);
    Command2 = makeButton(this, "Command2", QStringLiteral("&Add"), false);
    Command4 = makeButton(this, "Command4", QStringLiteral("&Ignore"), true);
    Command3 = makeButton(this, "Command3", QStringLiteral("Change"), false);
    Command3->setDefault(true);
    Command6 = makeButton(this, "Command6", QStringLiteral("Ignore A&ll"), true);
    Command5 = makeButton(this, "Command5", QStringLiteral("Cancel"), true);

    auto *words = new QVBoxLayout;
    words->addWidget(Label1);
    words->addWidget(Text1);
    words->addWidget(Label2);
    words->addWidget(lstMatches, 1);
    auto *buttons = new QVBoxLayout;
    for (QPushButton *b : {Command1, Command2, Command4, Command3, Command6, Command5})
        buttons->addWidget(b);
    buttons->addStretch(1);
    auto *layout = new QGridLayout(this);
    layout->addLayout(words, 0, 0);
    layout->addLayout(buttons, 0, 1);

    connect(Command1, &QPushButton::clicked, this, &frmSpellChecker::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &frmSpellChecker::Command2_Click);
    connect(Command3, &QPushButton::clicked, this, &frmSpellChecker::Command3_Click);
    connect(Command4, &QPushButton::clicked, this, &frmSpellChecker::Command4_Click);
    connect(Command5, &QPushButton::clicked, this, &frmSpellChecker::Command5_Click);
    connect(Command6, &QPushButton::clicked, this, &frmSpellChecker::Command6_Click);
    connect(lstMatches, &QListWidget::itemClicked, this, &frmSpellChecker::lstMatches_Click);
    connect(lstMatches, &QListWidget::itemDoubleClicked, this, &frmSpellChecker::lstMatches_DblClick);
    // Moving through the list by keys picks too, as a click does.
    connect(lstMatches, &QListWidget::currentItemChanged, this, [this](QListWidgetItem *item) {
        if (item && lstMatches->hasFocus())
            lstMatches_Click(item);
    });

    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(m_walk.get(), &ResumableWalk::stopped, this, [this] {
        Command2->setEnabled(true);
        Command3->setEnabled(true);
        Q_EMIT walkStopped(CurrentWord);
    });
    connect(m_walk.get(), &ResumableWalk::finished, this, &frmSpellChecker::onWalkEnded);
    // With its document gone there is nothing left to check.
    connect(&document, &frmDoc::Unloaded, this, [this] {
        m_walk->stop();
        close();
    });
}

frmSpellChecker::~frmSpellChecker() = default;

bool frmSpellChecker::isWalking() const
{
    return m_walk->isRunning();
}

bool frmSpellChecker::isWaiting() const
{
    return m_walk->isWaiting();
}

bool frmSpellChecker::Form_Load()
{
    QString error;
    if (!m_store.open(&error)) {
        m_workspace.MsgBox(error, MsgStyle::Exclamation);
        return false;
    }
    SavedCaret = m_document ? m_document->Text->SelStart() : 0;
    return true;
}

void frmSpellChecker::onWalkEnded(bool complete)
{
    Command2->setEnabled(false);
    Command3->setEnabled(false);
    Q_EMIT walkEnded(complete);
    if (!complete)
        return;
    const QPointer<frmSpellChecker> self(this);
    m_workspace.MsgBox(QStringLiteral("Spell checking complete."), MsgStyle::OkOnly);
    if (self)
        close();
}

void frmSpellChecker::Form_Unload()
{
    if (std::exchange(m_unloaded, true))
        return;
    m_walk->stop();
    EditingSurface *text = m_document ? m_document->Text : nullptr;
    if (text) {
        text->setSelStart(SavedCaret);
        text->setSelLength(0);
    }
    hide();
    if (text)
        text->SetFocus();
}

void frmSpellChecker::closeEvent(QCloseEvent *event)
{
    Form_Unload();
    event->accept();
}

void frmSpellChecker::reject()
{
    close();
}

QString frmSpellChecker::ExtractWord(const QString &text)
{
    QString word;
    for (const QChar c : text) {
        if (isWordChar(c))
            word += c;
        else if (!word.isEmpty())
            break;
    }
    return word;
}

void frmSpellChecker::CheckWord(QString &word, QString &result)
{
    result.clear();
    for (const QString &ignored : std::as_const(m_workspace.IgnoreList))
        if (ignored.compare(word, Qt::CaseInsensitive) == 0)
            return;
    if (lstMatches->count() > 0)
        lstMatches->clear();
    word = word.toLower();
    if (m_store.contains(word))
        return;
    Text1->setText(word);
    const QStringList matches = m_store.suggestions(SoundexName(word));
    if (matches.isEmpty())
        lstMatches->addItem(QStringLiteral("No suggestions"));
    else
        lstMatches->addItems(matches);
    result = QStringLiteral("bad");
}

void frmSpellChecker::Command1_Click()
{
    if (!isWalking() && m_document)
        m_walk->start();
}

void frmSpellChecker::Command2_Click()
{
    if (!isWaiting())
        return;
    QString error;
    const ErrorCode code = m_store.add(Text1->text().toLower(), &error);
    if (code == ErrorCode::DuplicateKey)
        m_workspace.MsgBox(QStringLiteral("Word already in database!"), MsgStyle::Exclamation);
    else if (code != ErrorCode::None)
        m_workspace.MsgBox(error, MsgStyle::Exclamation);
    m_walk->resume();
}

void frmSpellChecker::Command3_Click()
{
    EditingSurface *text = m_walk->surface();
    if (!isWaiting() || !text || CurrentWord.isEmpty())
        return;
    // The run the walk stands on, even when the user has moved the caret meanwhile.
    const int runStart = m_walk->runStart;
    text->setSelStart(runStart);
    text->setSelLength(m_walk->runLength);
    const QString run = text->SelText();
    const QChar first = CurrentWord.at(0);
    if (!run.isEmpty() && run.at(0) != first) {
        const qsizetype i = run.indexOf(first);
        if (i >= 0)
            text->setSelStart(runStart + int(i));
    }
    if (first >= QLatin1Char('A') && first <= QLatin1Char('Z')) {
        const QString replacement = Text1->text();
        Text1->setText(replacement.left(1).toUpper() + replacement.mid(1));
    }
    text->setSelLength(CurrentWordLength);
    text->setSelText(Text1->text());
    m_walk->resumeAt = text->SelStart();
    m_walk->resume();
}

void frmSpellChecker::Command4_Click()
{
    m_walk->resume();
}

void frmSpellChecker::Command5_Click()
{
    close();
}

void frmSpellChecker::Command6_Click()
{
    if (!isWaiting())
        return;
    m_workspace.IgnoreList.append(CurrentWord);
    m_walk->resume();
}

void frmSpellChecker::lstMatches_Click(QListWidgetItem *item)
{
    if (item)
        Text1->setText(item->text());
}

void frmSpellChecker::lstMatches_DblClick(QListWidgetItem *item)
{
    lstMatches_Click(item);
    Command3_Click();
}

frmSpellChecker *SpellChecker(QWidget *parent)
{
    return parent ? parent->findChild<frmSpellChecker *>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

void ShowSpellChecker(Workspace &workspace, frmDoc &document, QWidget *parent)
{
    if (frmSpellChecker *open = SpellChecker(parent); open && open->isVisible()) {
        open->raise();
        open->activateWindow();
        return;
    }
    auto *form = new frmSpellChecker(workspace, document, parent);
    if (!form->Form_Load()) {
        delete form;
        return;
    }
    form->adjustSize();
    CenterForm(form);
    form->show();
}

} // namespace pw
