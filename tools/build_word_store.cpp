// Builds the shipped word store from a word list: build_word_store LIST STORE
#include "spell/word_store_builder.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3) {
        std::fprintf(stderr, "usage: build_word_store WORDLIST STORE\n");
        return 2;
    }
    QElapsedTimer timer;
    timer.start();
    QString error;
    int words = 0;
    if (!pw::BuildWordStoreFromList(args[1], args[2], &error, &words)) {
        std::fprintf(stderr, "build_word_store: %s\n", qPrintable(error));
        return 1;
    }
    std::printf("build_word_store: %d words in %s (%lld ms)\n", words, qPrintable(args[2]),
                static_cast<long long>(timer.elapsed()));
    return 0;
}
