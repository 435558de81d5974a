#pragma once

#include "spell/word_store.h"

#include <QDialog>
#include <QPointer>
#include <QStringList>

#include <memory>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace pw {

class EditingSurface;
class ResumableWalk;
class Workspace;
class frmDoc;

// The spell checker: walks a document's text between tags word by word and stops at each word the
// word store doesn't know; the buttons answer and the walk goes on from where it stood. It belongs
// to the document it was opened for: that document closing ends the walk and closes the dialog.
class frmSpellChecker : public QDialog
{
    Q_OBJECT

public:
    // The characters that end a word run. Line ends and tabs end one too, as blanks do.
    static const QString Separators;

    frmSpellChecker(Workspace &workspace, frmDoc &document, QWidget *parent);
    ~frmSpellChecker() override;

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

    qint32 SavedCaret = 0;
    qint16 CurrentWordLength = 0;
    QString CurrentWord;

    // Opens the stores and keeps the document's caret. False, after telling the user, when the
    // word store can't be used.
    bool Form_Load();
    // word comes back in lower case; result is empty for a correct word, else "bad".
    void CheckWord(QString &word, QString &result);
    // The first run of letters A to Z (either case) and digits in text.
    static QString ExtractWord(const QString &text);

    bool isWalking() const;
    // Standing at an unknown word, waiting for a button.
    bool isWaiting() const;

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
    // The walk ended: at the end of the text (complete), or earlier.
    void walkEnded(bool complete);

protected:
    void closeEvent(QCloseEvent *event) override;
    void reject() override;

private:
    class Walk;
    friend class Walk;

    void Form_Unload();
    void onWalkEnded(bool complete);

    Workspace &m_workspace;
    WordStore m_store;
    QPointer<frmDoc> m_document; // the document checked, whose caret is kept
    std::unique_ptr<Walk> m_walk;
    bool m_unloaded = false;
};

// Opens the spell checker of parent for a document, centred and not modal; brings it up when it is
// already open. Does nothing but tell the user when the word store can't be used.
void ShowSpellChecker(Workspace &workspace, frmDoc &document, QWidget *parent);
// The spell checker open over parent, or none.
frmSpellChecker *SpellChecker(QWidget *parent);

} // namespace pw
