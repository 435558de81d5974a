#include "bench.h"

#include "app/application.h"
#include "core/main_window.h"
#include "platform/scripted_platform.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QStandardPaths>

#include <algorithm>
#include <cstdio>

namespace bench {

std::vector<Benchmark> &registry()
{
    static std::vector<Benchmark> all;
    return all;
}

void report(const QString &group, const QString &figure, double value, const QString &unit,
            const QString &extraJson)
{
    QString line = QStringLiteral("{\"bench\": \"%1\", \"figure\": \"%2\", \"value\": %3, \"unit\": \"%4\"")
                       .arg(group, figure)
                       .arg(value, 0, 'f', 4)
                       .arg(unit);
    if (!extraJson.isEmpty())
        line += QStringLiteral(", ") + extraJson;
    line += QLatin1Char('}');
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

void showMain(pw::Application &program)
{
    program.main().resize(1024, 720);
    program.main().show();
}

bool writePage(const QString &path, qint64 bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(generatePage(bytes).toUtf8()) >= 0;
}

QStringList makeSiteFolders(const QString &base)
{
    QStringList folders;
    for (int top = 0; top < 50; ++top) {
        const QString upper = QStringLiteral("%1/section%2").arg(base).arg(top);
        for (int sub = 0; sub < 20; ++sub) {
            folders.append(sub == 0 ? upper : QStringLiteral("%1/part%2").arg(upper).arg(sub));
            QDir().mkpath(folders.last());
        }
    }
    return folders;
}

QString generatePage(qint64 bytes, int commentEvery)
{
    static const char *words[] = {"the", "quick", "brown", "fox", "jumps", "over", "lazy", "dog",
                                  "page", "markup", "editor", "colour", "table", "link", "image"};
    QRandomGenerator rng(42);
    QString page;
    page.reserve(bytes + 200);
    page += QStringLiteral("<HTML>\r\n<HEAD>\r\n<TITLE>Benchmark page</TITLE>\r\n</HEAD>\r\n<BODY BGCOLOR=\"#FFFFFF\">\r\n");
    int line = 0;
    while (page.size() < bytes) {
        ++line;
        if (commentEvery > 0 && line % commentEvery == 0) {
            page += QStringLiteral("<!-- section %1: <B>not a tag</B> -->\r\n").arg(line);
            continue;
        }
        switch (line % 4) {
        case 0:
            page += QStringLiteral("<P><A HREF=\"page%1.html\">%2</A> <B>%3</B></P>\r\n")
                        .arg(line).arg(words[rng.bounded(15)], words[rng.bounded(15)]);
            break;
        case 1:
            page += QStringLiteral("<TR><TD ALIGN=\"LEFT\">%1</TD><TD>%2 %3</TD></TR>\r\n")
                        .arg(words[rng.bounded(15)], words[rng.bounded(15)], words[rng.bounded(15)]);
            break;
        case 2:
            page += QStringLiteral("<IMG SRC=\"img/p%1.gif\" WIDTH=\"32\" HEIGHT=\"32\" ALT=\"%2\"><BR>\r\n")
                        .arg(line).arg(words[rng.bounded(15)]);
            break;
        default:
            page += QStringLiteral("%1 %2 %3 <I>%4</I> %5.\r\n")
                        .arg(words[rng.bounded(15)], words[rng.bounded(15)], words[rng.bounded(15)],
                             words[rng.bounded(15)], words[rng.bounded(15)]);
        }
    }
    page += QStringLiteral("</BODY>\r\n</HTML>\r\n");
    return page;
}

double percentile(std::vector<double> &samples, double p)
{
    if (samples.empty())
        return 0;
    std::sort(samples.begin(), samples.end());
    const size_t i = std::min(samples.size() - 1, size_t(p * (samples.size() - 1) + 0.5));
    return samples[i];
}

qint64 residentBytes()
{
    QFile f(QStringLiteral("/proc/self/statm"));
    if (!f.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = f.readAll().split(' ');
    return fields.value(1).toLongLong() * 4096;
}

} // namespace bench

// Usage: pagewright_bench [GROUP...]   (all groups when none is named)
int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // Never the user's own settings and folders: an autosaved file left there would come back at
    // the next start.
    QStandardPaths::setTestModeEnabled(true);
    pw::ScopedScriptedPlatform platform;
    platform->realTicks = true; // passes paced by the real clock, as in use
    QStringList wanted = app.arguments().mid(1);
    for (const auto &b : bench::registry())
        if (wanted.isEmpty() || wanted.contains(QString::fromLatin1(b.name)))
            b.run();
    return 0;
}
