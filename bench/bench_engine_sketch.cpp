#include "bench.h"

#include <QFile>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cstring>
#include <vector>

// A sketch of the text engine the README weighs against QTextDocument: the page's characters in a
// gap buffer with a class byte each beside them, a line index, and a QTextLayout for each shown line
// only. The program does not use it; it measures what such an engine's open, colouring, first
// screen, key and memory would cost on the same page. PAGEWRIGHT_BENCH_PAGE names a file to use
// (read as UTF-8) instead of the generated 8 MB page.
namespace {

template<typename T> class GapBuffer
{
public:
    void assign(const T *data, qsizetype size, qsizetype room)
    {
        m_data.resize(size_t(size + room));
        std::copy(data, data + size, m_data.begin());
        m_gapStart = size;
        m_gapEnd = size + room;
    }
    qsizetype size() const { return qsizetype(m_data.size()) - (m_gapEnd - m_gapStart); }
    T at(qsizetype i) const { return m_data[size_t(i < m_gapStart ? i : i + m_gapEnd - m_gapStart)]; }
    void insert(qsizetype at, T value)
    {
        moveGap(at);
        if (m_gapStart == m_gapEnd)
            grow();
        m_data[size_t(m_gapStart++)] = value;
    }
    // The stretch [from, from + length) as one run (the gap moved out of it).
    const T *stretch(qsizetype from, qsizetype length)
    {
        if (from < m_gapStart && from + length > m_gapStart)
            moveGap(from + length);
        return m_data.data() + (from < m_gapStart ? from : from + m_gapEnd - m_gapStart);
    }
    qsizetype bytes() const { return qsizetype(m_data.capacity() * sizeof(T)); }

private:
    void moveGap(qsizetype at)
    {
        T *d = m_data.data();
        if (at < m_gapStart)
            std::memmove(d + m_gapEnd - (m_gapStart - at), d + at, size_t(m_gapStart - at) * sizeof(T));
        else if (at > m_gapStart)
            std::memmove(d + m_gapStart, d + m_gapEnd, size_t(at - m_gapStart) * sizeof(T));
        m_gapEnd += at - m_gapStart;
        m_gapStart = at;
    }
    void grow()
    {
        const qsizetype room = std::max<qsizetype>(4096, size() / 16);
        m_data.insert(m_data.begin() + m_gapEnd, size_t(room), T());
        m_gapEnd += room;
    }

    std::vector<T> m_data;
    qsizetype m_gapStart = 0, m_gapEnd = 0;
};

double msSince(const QElapsedTimer &t)
{
    return double(t.nsecsElapsed()) / 1e6;
}

} // namespace

static bench::Register engineSketchBench("engine_sketch", [] {
    QString page;
    if (const QString path = qEnvironmentVariable("PAGEWRIGHT_BENCH_PAGE"); !path.isEmpty()) {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            page = QString::fromUtf8(file.readAll());
    }
    if (page.isEmpty())
        page = bench::generatePage(8 * 1024 * 1024);
    const qint64 fileBytes = page.toUtf8().size();
    const auto *chars = reinterpret_cast<const char16_t *>(page.utf16());

    // Open: the decoded text copied into the buffer, the line ends found.
    QElapsedTimer t;
    t.start();
    GapBuffer<char16_t> text;
    text.assign(chars, page.size(), 64 * 1024);
    std::vector<qsizetype> lineStarts{0};
    for (qsizetype lf = page.indexOf(QLatin1Char('\n')); lf >= 0; lf = page.indexOf(QLatin1Char('\n'), lf + 1))
        lineStarts.push_back(lf + 1);
    const double loadMs = msSince(t);

    // Colour: one scan writing a byte per character (1 text, 2 tag, 3 comment).
    t.restart();
    std::vector<uchar> codes(size_t(page.size()), 1);
    for (qsizetype at = page.indexOf(QLatin1Char('<')); at >= 0;) {
        const bool comment = QStringView(page).mid(at, 4) == QLatin1String("<!--");
        qsizetype end = comment ? page.indexOf(QLatin1String("-->"), at + 4) : page.indexOf(QLatin1Char('>'), at + 1);
        end = end < 0 ? page.size() : end + (comment ? 3 : 1);
        std::fill(codes.begin() + at, codes.begin() + end, uchar(comment ? 3 : 2));
        at = page.indexOf(QLatin1Char('<'), end);
    }
    GapBuffer<uchar> classes;
    classes.assign(codes.data(), qsizetype(codes.size()), 64 * 1024);
    codes = {};
    const double colourMs = msSince(t);

    // The first screen: 45 lines from the middle, each laid out with its class formats and drawn.
    QFont font(QStringLiteral("Sans"), 10);
    QTextCharFormat tag, comment;
    tag.setFontWeight(QFont::Bold);
    comment.setForeground(Qt::darkGreen);
    const auto layOut = [&](qsizetype line, QTextLayout &layout) {
        const qsizetype from = lineStarts[size_t(line)];
        qsizetype to = size_t(line + 1) < lineStarts.size() ? lineStarts[size_t(line + 1)] - 1 : text.size();
        if (to > from && text.at(to - 1) == u'\r')
            --to;
        const char16_t *s = text.stretch(from, to - from);
        const uchar *c = classes.stretch(from, to - from);
        layout.setText(QString(reinterpret_cast<const QChar *>(s), to - from));
        QList<QTextLayout::FormatRange> ranges;
        for (qsizetype i = 0, run = 0; i <= to - from; ++i)
            if (i == to - from || c[i] != c[run]) {
                if (c[run] != 1)
                    ranges.append({int(run), int(i - run), c[run] == 2 ? tag : comment});
                run = i;
            }
        layout.setFormats(ranges);
        layout.beginLayout();
        for (QTextLine l = layout.createLine(); l.isValid(); l = layout.createLine())
            l.setLineWidth(1000);
        layout.endLayout();
    };
    QImage screen(1000, 720, QImage::Format_ARGB32_Premultiplied);
    const qsizetype middle = qsizetype(lineStarts.size()) / 2;
    t.restart();
    {
        QPainter p(&screen);
        std::vector<QTextLayout> shown(45);
        qreal y = 0;
        for (qsizetype i = 0; i < 45; ++i) {
            shown[size_t(i)].setFont(font);
            layOut(middle + i, shown[size_t(i)]);
            shown[size_t(i)].draw(&p, QPointF(0, y));
            y += shown[size_t(i)].boundingRect().height();
        }
    }
    const double screenMs = msSince(t);

    // A key in the middle: the character and its byte go in, the line starts behind move on, the
    // line is laid out again.
    std::vector<double> keys;
    QTextLayout line;
    line.setFont(font);
    for (int k = 0; k < 200; ++k) {
        QElapsedTimer one;
        one.start();
        const qsizetype at = lineStarts[size_t(middle)] + k % 20;
        text.insert(at, u'x');
        classes.insert(at, 1);
        for (auto s = lineStarts.begin() + middle + 1; s != lineStarts.end(); ++s)
            ++*s;
        layOut(middle, line);
        keys.push_back(double(one.nsecsElapsed()) / 1e6);
    }

    const qint64 held = text.bytes() + classes.bytes() + qint64(lineStarts.capacity() * sizeof(qsizetype));
    const QString counts = QStringLiteral("\"bytes\": %1, \"lines\": %2").arg(fileBytes).arg(lineStarts.size());
    bench::report("engine_sketch", "load", loadMs, "ms", counts);
    bench::report("engine_sketch", "colour", colourMs, "ms");
    bench::report("engine_sketch", "first_screen", screenMs, "ms");
    bench::report("engine_sketch", "key_median", bench::percentile(keys, 0.5), "ms");
    bench::report("engine_sketch", "memory", double(held) / 1048576.0, "MiB",
                  QStringLiteral("\"times_file_size\": %1").arg(double(held) / double(fileBytes), 0, 'f', 2));
});
