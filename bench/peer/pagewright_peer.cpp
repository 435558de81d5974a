// The program's open-and-colour as an engine of the peer benchmark: prints one JSON line of the
// peers' shape for `FILE [--mode hidden|uhtml] [--warm N]`. Each run opens the file twice through
// the open sequence, once with colouring off (load) and once with it on (total); colour is the
// difference. The main window is shown unless the mode is hidden.
#include "app/application.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/workspace.h"
#include "files/open_document.h"
#include "platform/scripted_platform.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

double rssMb(const char *field)
{
    FILE *f = std::fopen("/proc/self/status", "r");
    if (!f)
        return -1;
    char line[256];
    double value = -1;
    const size_t n = std::strlen(field);
    while (std::fgets(line, sizeof line, f))
        if (std::strncmp(line, field, n) == 0 && line[n] == ':')
            value = std::strtod(line + n + 1, nullptr) / 1024.0;
    std::fclose(f);
    return value;
}

void resetPeak()
{
    if (FILE *f = std::fopen("/proc/self/clear_refs", "w")) {
        std::fputs("5", f);
        std::fclose(f);
    }
}

double median(std::vector<double> v)
{
    if (v.empty())
        return 0;
    std::sort(v.begin(), v.end());
    const size_t m = v.size() / 2;
    return v.size() % 2 ? v[m] : (v[m - 1] + v[m]) / 2;
}

std::string num(double v)
{
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.2f", v);
    return buf;
}

std::string quoted(const QString &s)
{
    return "\"" + QString(s).replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('"'), QLatin1String("\\\"")).toStdString() + "\"";
}

std::string array(const std::vector<double> &v)
{
    std::string out = "[";
    for (size_t i = 0; i < v.size(); ++i) {
        if (i)
            out += ',';
        out += num(v[i]);
    }
    out += ']';
    return out;
}

struct Run {
    double load = 0, total = 0, peak = 0, live = 0;
};

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QString file, mode;
    int warm = 3;
    const QStringList args = app.arguments().mid(1);
    for (int i = 0; i < args.size(); ++i) {
        if (args[i] == QLatin1String("--warm") && i + 1 < args.size())
            warm = qMax(0, args[++i].toInt());
        else if (args[i] == QLatin1String("--mode") && i + 1 < args.size())
            mode = args[++i];
        else if (file.isEmpty() && !args[i].startsWith(QLatin1Char('-')))
            file = args[i];
    }
    if (file.isEmpty() || !QFileInfo(file).isFile()) {
        std::fprintf(stderr, "usage: pagewright FILE [--mode hidden|uhtml] [--warm N]\n");
        return 2;
    }
    QStandardPaths::setTestModeEnabled(true);
    pw::ScopedScriptedPlatform platform;
    platform->realTicks = true; // passes paced by the real clock, as in use
    pw::Application program(pw::platform());
    pw::Workspace &ws = program.workspace();
    ws.options.setChecked(pw::Option::UHTML, mode == QLatin1String("uhtml"));
    if (mode != QLatin1String("hidden")) {
        program.main().resize(1024, 720);
        program.main().show();
    }
    const double baseRss = rssMb("VmRSS");
    const QString path = QFileInfo(file).absoluteFilePath();

    const auto open = [&](bool colour, bool *ok) {
        ws.options.setChecked(pw::Option::Highlight, colour);
        QElapsedTimer t;
        t.start();
        pw::frmDoc *doc = pw::OpenFromHandOver(ws, path);
        QCoreApplication::processEvents(); // the first paint of what was opened
        const double ms = double(t.nsecsElapsed()) / 1e6;
        if (doc && ok) {
            const int tag = doc->Text->Find(QStringLiteral("<"), 0, -1, pw::EditingSurface::NoHighlight);
            *ok = tag >= 0 && doc->Text->fontAt(tag) == ws.fonts.html;
        }
        return std::make_pair(ms, doc);
    };

    std::vector<Run> runs;
    bool ok = false;
    for (int i = 0; i <= warm; ++i) {
        Run run;
        auto [load, plain] = open(false, nullptr);
        run.load = load;
        if (plain)
            plain->unloadQuietly();
        QCoreApplication::processEvents();
        resetPeak();
        auto [total, coloured] = open(true, &ok);
        run.total = total;
        run.live = rssMb("VmRSS");
        run.peak = rssMb("VmHWM");
        if (coloured)
            coloured->unloadQuietly();
        QCoreApplication::processEvents();
        runs.push_back(run);
    }

    std::vector<double> load, colour, total;
    double peak = 0, live = 0;
    for (size_t i = 0; i < runs.size(); ++i) {
        peak = std::max(peak, runs[i].peak);
        live = std::max(live, runs[i].live);
        if (i == 0 && runs.size() > 1)
            continue;
        load.push_back(runs[i].load);
        colour.push_back(runs[i].total - runs[i].load);
        total.push_back(runs[i].total);
    }
    const Run &cold = runs.front();
    const std::string engine = mode.isEmpty() ? "pagewright" : "pagewright-" + mode.toStdString();
    std::string out = "{\"engine\":\"" + engine + "\",\"variant\":\"open sequence + HighlightDocument\"";
    out += ",\"file\":" + quoted(file) + ",\"bytes\":" + std::to_string(QFileInfo(file).size());
    out += ",\"qt\":\"" + std::string(qVersion()) + "\"";
    out += ",\"cold\":{\"load_ms\":" + num(cold.load) + ",\"colour_ms\":" + num(cold.total - cold.load)
           + ",\"total_ms\":" + num(cold.total) + "}";
    out += ",\"warm\":{\"load_ms\":" + num(median(load)) + ",\"colour_ms\":" + num(median(colour))
           + ",\"total_ms\":" + num(median(total)) + ",\"colour_min_ms\":"
           + num(*std::min_element(colour.begin(), colour.end())) + ",\"colour_max_ms\":"
           + num(*std::max_element(colour.begin(), colour.end())) + ",\"runs\":" + std::to_string(colour.size()) + "}";
    out += ",\"warm_colour_ms\":" + array(colour) + ",\"warm_load_ms\":" + array(load);
    out += ",\"base_rss_mb\":" + num(baseRss) + ",\"peak_rss_mb\":" + num(peak) + ",\"live_rss_mb\":" + num(live);
    out += std::string(",\"check\":{\"ok\":") + (ok ? "true" : "false") + "}}";
    std::printf("%s\n", out.c_str());
    return 0;
}
