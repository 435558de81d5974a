#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace pw {
class Application;
}

namespace bench {

// A named group of figures; run() prints one JSON line per figure through report().
struct Benchmark {
    const char *name;
    std::function<void()> run;
};

std::vector<Benchmark> &registry();

struct Register {
    Register(const char *name, std::function<void()> run) { registry().push_back({name, std::move(run)}); }
};

// {"bench": group, "figure": name, "value": v, "unit": unit} and any extra fields.
void report(const QString &group, const QString &figure, double value, const QString &unit,
            const QString &extraJson = QString());

// A page of realistic markup of about `bytes` bytes: nested tags with attributes, text, comments.
QString generatePage(qint64 bytes, int commentEvery = 70);
// Such a page written to a file as UTF-8; false when it can't be written.
bool writePage(const QString &path, qint64 bytes);
// The folders of a site of 1,000 (50 with 19 below each), made under base.
QStringList makeSiteFolders(const QString &base);

// Median and 99th percentile of samples (sorted in place).
double percentile(std::vector<double> &samples, double p);

// The program's main window shown at the size every group measures in.
void showMain(pw::Application &program);

// Resident memory of this process in bytes.
qint64 residentBytes();

} // namespace bench
