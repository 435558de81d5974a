#include "spell/checking_walk.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/status_line.h"
#include "platform/platform.h"
#include "spell/soundex.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>


namespace pw {

namespace {

QPointer<frmSpellChecker> &loaded()
{
    static QPointer<frmSpellChecker> form;
    return form;
}

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

const QString frmSpellChecker::Separators = QStringLiteral(" ,;:.?!<\r\n\t");
QStringList frmSpellChecker::IgnoreList;

frmSpellChecker::frmSpellChecker(QWidget *parent) : QDialog(parent)
{
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

    // With the main window closing there is nothing left to check; its end deletes this too.
    if (frmMDIMain *main = frmMDIMain::instance())
        connect(main, &frmMDIMain::unloaded, this, &QWidget::close);
    loaded() = this;
}

frmSpellChecker::~frmSpellChecker()
{
    endWalk();
}

frmSpellChecker *frmSpellChecker::instance()
{
    return loaded();
}

bool frmSpellChecker::Form_Load()
{
    QString error;
    if (!m_store.open(&error)) {
        MsgBox(error, 48, AppTitle());
        return false;
    }
    m_loadDocument = CurrentDocumentWindow();
    SavedCaret = m_loadDocument ? m_loadDocument->Text->SelStart() : 0;
    return true;
}

void frmSpellChecker::Form_Unload()
{
    if (std::exchange(m_unloaded, true))
        return;
    endWalk();
    EditingSurface *text = m_loadDocument ? m_loadDocument->Text : nullptr;
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

void frmSpellChecker::goOn()
{
    WalkGoOn = True;
    if (m_wait)
        m_wait->quit();
}

void frmSpellChecker::endWalk()
{
    m_ended = true;
    if (m_wait)
        m_wait->quit();
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
    for (const QString &ignored : std::as_const(IgnoreList))
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

bool frmSpellChecker::CheckDocument()
{
    frmDoc *document = CurrentDocumentWindow();
    if (!document)
        return true;
    const QPointer<frmSpellChecker> self(this);
    const QPointer<frmDoc> walked(document);
    const QPointer<EditingSurface> text(document->Text);
    m_walkDocument = document;
    m_walking = true;
    m_ended = false;
    bool ended = false;
    // A document that closes ends the walk; nothing is left to go on with.
    const QMetaObject::Connection closed = connect(document, &frmDoc::Unloaded, this, [this] { endWalk(); });
    const QMetaObject::Connection gone = connect(document, &QObject::destroyed, this, [this] { endWalk(); });

    TextWindow window(*text);
    text->setSelStart(0);
    int closePos = text->Find(QStringLiteral(">"), 0, -1, EditingSurface::NoHighlight);
    while (closePos != -1 && !ended) {
        int openPos = text->Find(QStringLiteral("<"), closePos + 1, -1, EditingSurface::NoHighlight);
        if (openPos == -1)
            openPos = text->TextLength();
        int pos = closePos + 1;
        while (pos < openPos && pos < text->TextLength()) {
            const QString raw = window.runAt(pos);
            QString word = ExtractWord(raw);
            CurrentWord = word;
            CurrentWordLength = qint16(word.size());
            m_runStart = pos;
            m_runLength = int(raw.size());
            m_resumeAt = pos + m_runLength;
            if (!word.isEmpty() && !word.at(0).isDigit() && !raw.contains(QLatin1Char('&'))) {
                QString result;
                CheckWord(word, result);
                if (!result.isEmpty()) {
                    // The selection shows the run, as Span gives it.
                    text->setSelStart(m_runStart);
                    text->setSelLength(m_runLength);
                    text->ensureCursorVisible();
                    text->Refresh();
                    Command2->setEnabled(true);
                    Command3->setEnabled(true);
                    WalkGoOn = False;
                    const int lengthBefore = text->TextLength();
                    Q_EMIT walkStopped(CurrentWord);
                    if (self && !m_ended && !WalkGoOn) {
                        QEventLoop wait;
                        m_wait = &wait;
                        wait.exec();
                        if (self)
                            m_wait = nullptr;
                    }
                    if (!self)
                        return false;
                    Command2->setEnabled(false);
                    Command3->setEnabled(false);
                    ended = m_ended || !WalkGoOn || !walked || !text;
                    if (ended)
                        break;
                    // A change moves the rest of the stretch by what it added or took away.
                    openPos += text->TextLength() - lengthBefore;
                    window.clear();
                }
            }
            // Step over the separator; a line end is one separator of two characters.
            pos = m_resumeAt + (window.charAt(m_resumeAt) == QLatin1Char('\r') ? 2 : 1);
        }
        if (!ended)
            closePos = text->Find(QStringLiteral(">"), openPos, -1, EditingSurface::NoHighlight);
    }
    if (!ended)
        text->setSelLength(0);
    disconnect(closed);
    disconnect(gone);
    m_walking = false;
    m_walkDocument = nullptr;
    return !ended;
}

void frmSpellChecker::Command1_Click()
{
    if (m_walking)
        return;
    const QPointer<frmSpellChecker> self(this);
    const bool complete = CheckDocument();
    if (!self)
        return;
    if (complete) {
        MsgBox(QStringLiteral("Spell checking complete."), 0, AppTitle());
        if (!self)
            return;
    }
    close();
}

void frmSpellChecker::Command2_Click()
{
    QString error;
    const ErrorCode code = m_store.add(Text1->text().toLower(), &error);
    if (code == ErrorCode::DuplicateKey)
        MsgBox(QStringLiteral("Word already in database!"), 48, AppTitle());
    else if (code != ErrorCode::None)
        MsgBox(error, 48, AppTitle());
    goOn();
}

void frmSpellChecker::Command3_Click()
{
    EditingSurface *text = m_walkDocument ? m_walkDocument->Text : nullptr;
    if (!m_walking || !text || CurrentWord.isEmpty())
        return;
    // The run the walk stands on, even when the user has moved the caret meanwhile.
    text->setSelStart(m_runStart);
    text->setSelLength(m_runLength);
    const QString run = text->SelText();
    const QChar first = CurrentWord.at(0);
    if (!run.isEmpty() && run.at(0) != first) {
        const qsizetype i = run.indexOf(first);
        if (i >= 0)
            text->setSelStart(m_runStart + int(i));
    }
    if (first >= QLatin1Char('A') && first <= QLatin1Char('Z')) {
        const QString replacement = Text1->text();
        Text1->setText(replacement.left(1).toUpper() + replacement.mid(1));
    }
    text->setSelLength(CurrentWordLength);
    text->setSelText(Text1->text());
    m_resumeAt = text->SelStart();
    goOn();
}

void frmSpellChecker::Command4_Click()
{
    goOn();
}

void frmSpellChecker::Command5_Click()
{
    close();
}

void frmSpellChecker::Command6_Click()
{
    if (m_walking)
        IgnoreList.append(CurrentWord);
    goOn();
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

void ShowSpellChecker()
{
    if (frmSpellChecker *open = frmSpellChecker::instance(); open && open->isVisible()) {
        open->raise();
        open->activateWindow();
        return;
    }
    auto *form = new frmSpellChecker(frmMDIMain::instance());
    if (!form->Form_Load()) {
        delete form;
        return;
    }
    form->adjustSize();
    CenterForm(form);
    form->show();
}

} // namespace pw
