#pragma once

#include "spell/word_store.h"

#include <QDialog>
#include <QPointer>
#include <QStringList>

class QEventLoop;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace pw {

class EditingSurface;
class frmDoc;

// The spell checker: walks the current document's text between tags word by word and stops at
// each word the word store doesn't know, until the user answers with a button.
class frmSpellChecker : public QDialog
{
    Q_OBJECT

public:
    // The characters that end a word run. Line ends and tabs end one too, as blanks do.
    static const QString Separators;

    explicit frmSpellChecker(QWidget *parent = nullptr);
    ~frmSpellChecker() override;

    // The loaded instance, or nullptr.
    static frmSpellChecker *instance();

    QLabel *Label1 = nullptr;
    QLineEdit *Text1 = nullptr;
    QLabel *Label2 = nullptr;
    QListWidget *lstMatches = nullptr;
    QPushButton *Command1 = nullptr; // Check
    QPushButton *Command2 = nullptr; // Add
    QPushButton *Command3 = nullptr; // Change
    QPushButton *Command4 = nullptr; // Ignore
    QPushButton *Command5 = nullptr; // Cancel
    QPushButton *Command6 = nullptr; // Ignore All

    qint16 WalkGoOn = 0;
    qint32 SavedCaret = 0;
    qint16 CurrentWordLength = 0;
    QString CurrentWord;
    // Words of Ignore All; kept for later checks in the same run of the program.
    static QStringList IgnoreList;
    static int IgnoreCount() { return int(IgnoreList.size()); }

    // Opens the stores and keeps the current document's caret. False, after telling the user,
    // when the word store can't be used.
    bool Form_Load();
    // The walk over the current document. False when it was ended before the end of the text.
    bool CheckDocument();
    // word comes back in lower case; result is empty for a correct word, else "bad".
    void CheckWord(QString &word, QString &result);
    // The first run of letters A to Z (either case) and digits in text.
    static QString ExtractWord(const QString &text);

    bool isWalking() const { return m_walking; }

    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Command5_Click();
    void Command6_Click();
    void lstMatches_Click(QListWidgetItem *item);
    void lstMatches_DblClick(QListWidgetItem *item);

Q_SIGNALS:
    // The walk stands at an unknown word and waits for a button.
    void walkStopped(const QString &word);

protected:
    void closeEvent(QCloseEvent *event) override;
    void reject() override;

private:
    void Form_Unload();
    void goOn();
    void endWalk();

    WordStore m_store;
    QPointer<frmDoc> m_loadDocument; // the document whose caret was kept
    QPointer<frmDoc> m_walkDocument;
    QEventLoop *m_wait = nullptr;
    bool m_walking = false;
    bool m_ended = false;
    bool m_unloaded = false;
    // The run the walk stands on, and where it goes on after the answer.
    int m_runStart = 0;
    int m_runLength = 0;
    int m_resumeAt = 0;
};

// Opens the spell checker for the current document, centred and not modal; brings it up when it
// is already open. Does nothing but tell the user when the word store can't be used.
void ShowSpellChecker();

} // namespace pw
