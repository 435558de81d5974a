#include "bench.h"

#include "app/application.h"
#include "core/workspace.h"
#include "platform/platform.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "spell/soundex.h"
#include "spell/checking_walk.h"
#include "spell/word_store.h"
#include "spell/word_store_builder.h"

#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QRandomGenerator>
#include <QTemporaryDir>

namespace {

const QString WordList = QStringLiteral("/usr/share/dict/american-english");

QStringList listWords()
{
    QFile f(WordList);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return pw::StoreWords(QString::fromUtf8(f.readAll()).split(QLatin1Char('\n')));
}

// A page of about `bytes` whose text between tags holds only words of the store.
QString knownWordsPage(const QStringList &words, qint64 bytes, int *wordCount)
{
    QRandomGenerator rng(7);
    QString page = QStringLiteral("<HTML>\r\n<BODY BGCOLOR=\"#FFFFFF\">\r\n");
    *wordCount = 0;
    while (page.size() < bytes) {
        page += QStringLiteral("<P ALIGN=\"LEFT\">");
        for (int line = 0; line < 3; ++line) {
            for (int i = 0; i < 10; ++i) {
                page += words[rng.bounded(int(words.size()))];
                page += i == 9 ? QStringLiteral(".") : i == 4 ? QStringLiteral(", ") : QStringLiteral(" ");
            }
            *wordCount += 10;
            page += QStringLiteral("\r\n");
        }
        page += QStringLiteral("<B>") + words[rng.bounded(int(words.size()))] + QStringLiteral("</B></P>\r\n");
        ++*wordCount;
    }
    page += QStringLiteral("</BODY>\r\n</HTML>\r\n");
    return page;
}

void run()
{
    QTemporaryDir dir;
    const QString store = dir.filePath(QStringLiteral("spwords.tpw"));
    QElapsedTimer t;
    t.start();
    QString error;
    int stored = 0;
    if (!pw::BuildWordStoreFromList(WordList, store, &error, &stored)) {
        bench::report("spell", "store_build", -1, "ms", QStringLiteral("\"error\": \"%1\"").arg(error));
        return;
    }
    bench::report("spell", "store_build", double(t.nsecsElapsed()) / 1e6, "ms",
                  QStringLiteral("\"words\": %1").arg(stored));
    pw::setShippedWordStorePath(store);
    QFile::remove(pw::UserWordStorePath());

    const QStringList words = listWords();
    pw::Application program(pw::platform());
    pw::Workspace &ws = program.workspace();
    pw::frmDoc *doc = ws.slots.CreateDocumentWindow(ws.slots.FindFreeSlot(), QStringLiteral("Untitled: 1"));
    auto *form = new pw::frmSpellChecker(ws, *doc, &program.main());
    form->setAttribute(Qt::WA_DeleteOnClose, false);
    if (!form->Form_Load())
        return;
    bool complete = false;
    QObject::connect(form, &pw::frmSpellChecker::walkEnded, form, [&complete](bool c) { complete = c; });

    // Known words through CheckWord: one word query each.
    QRandomGenerator rng(3);
    constexpr int lookUps = 100000;
    auto lookUpRate = [&] {
        t.restart();
        for (int i = 0; i < lookUps; ++i) {
            QString word = words[rng.bounded(int(words.size()))];
            QString result;
            form->CheckWord(word, result);
        }
        return lookUps / (double(t.nsecsElapsed()) / 1e9);
    };
    bench::report("spell", "word_lookups", lookUpRate(), "per_s");

    // Unknown words: the word query, the key query with its rows, and the list filled.
    constexpr int keyLookUps = 10000;
    qint64 rows = 0;
    t.restart();
    for (int i = 0; i < keyLookUps; ++i) {
        QString word = words[rng.bounded(int(words.size()))] + QStringLiteral("q");
        QString result;
        form->CheckWord(word, result);
        rows += form->lstMatches->count();
    }
    bench::report("spell", "key_lookups", keyLookUps / (double(t.nsecsElapsed()) / 1e9), "per_s",
                  QStringLiteral("\"rows_per_key\": %1").arg(double(rows) / keyLookUps, 0, 'f', 1));

    // The walk over pages whose words are all known.
    for (const qint64 size : {100 * 1024LL, 1024 * 1024LL}) {
        int count = 0;
        doc->Text->setText(knownWordsPage(words, size, &count));
        t.restart();
        form->Command1_Click();
        const double ms = double(t.nsecsElapsed()) / 1e6;
        const QString extra = QStringLiteral("\"words\": %1, \"us_per_word\": %2, \"complete\": %3")
                                  .arg(count)
                                  .arg(ms * 1000 / count, 0, 'f', 2)
                                  .arg(complete ? "true" : "false");
        bench::report("spell", QStringLiteral("walk_%1KB").arg(size / 1024), ms, "ms", extra);
    }
    // With a user store of added words beside the shipped one: two word queries for each word.
    {
        pw::WordStore added;
        if (added.open(&error))
            added.add(QStringLiteral("pagewright"), &error);
    }
    delete form;
    form = new pw::frmSpellChecker(ws, *doc, &program.main());
    if (!form->Form_Load())
        return;
    bench::report("spell", "word_lookups_with_user_store", lookUpRate(), "per_s");

    delete form;
    QFile::remove(pw::UserWordStorePath());
    pw::setShippedWordStorePath(QString());
}

bench::Register registration("spell", run);

} // namespace
