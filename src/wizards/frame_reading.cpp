#include "wizards/frame_reading.h"

#include <cmath>
#include <memory>

namespace pw
{

namespace
{

constexpr int Grid = 15; // twips per pixel of the designer: where a mouse can put an edge

struct Node {
    bool isSet = false;
    QStringList rows, cols;
    std::vector<std::unique_ptr<Node>> children;
    FrameSpec frame;
};

struct Attribute {
    QString name; // upper case
    QString value;
    QString raw;
};

// The position of the ">" that ends the tag starting at from: the first one outside quotes.
qsizetype tagEnd(const QString &text, qsizetype from)
{
    QChar quote;
    for (qsizetype i = from + 1; i < text.size(); ++i) {
        const QChar c = text[i];
        if (!quote.isNull()) {
            if (c == quote)
                quote = QChar();
        } else if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
            quote = c;
        } else if (c == QLatin1Char('>')) {
            return i;
        }
    }
    return -1;
}

QList<Attribute> attributes(QStringView inside)
{
    QList<Attribute> out;
    qsizetype i = 0;
    const auto atSpace = [&] { return i < inside.size() && inside[i].isSpace(); };
    while (i < inside.size()) {
        while (atSpace())
            ++i;
        const qsizetype start = i;
        while (i < inside.size() && !inside[i].isSpace() && inside[i] != QLatin1Char('='))
            ++i;
        if (i == start) {
            ++i;
            continue;
        }
        Attribute a;
        a.name = inside.mid(start, i - start).toString().toUpper();
        qsizetype look = i;
        while (look < inside.size() && inside[look].isSpace())
            ++look;
        if (look < inside.size() && inside[look] == QLatin1Char('=')) {
            i = look + 1;
            while (atSpace())
                ++i;
            if (i < inside.size() && (inside[i] == QLatin1Char('"') || inside[i] == QLatin1Char('\''))) {
                const QChar quote = inside[i];
                const qsizetype close = inside.indexOf(quote, i + 1);
                const qsizetype stop = close < 0 ? inside.size() : close;
                a.value = inside.mid(i + 1, stop - i - 1).toString();
                i = close < 0 ? inside.size() : close + 1;
            } else {
                const qsizetype valueStart = i;
                while (i < inside.size() && !inside[i].isSpace())
                    ++i;
                a.value = inside.mid(valueStart, i - valueStart).toString();
            }
        }
        a.raw = inside.mid(start, i - start).toString();
        out.append(a);
    }
    return out;
}

FrameSpec frameOf(const QList<Attribute> &attrs)
{
    FrameSpec f;
    QStringList extra;
    for (const Attribute &a : attrs) {
        if (a.name == QLatin1String("NAME"))
            f.Name = a.value.left(30);
        else if (a.name == QLatin1String("SRC"))
            f.Source = a.value.left(256);
        else if (a.name == QLatin1String("MARGINWIDTH"))
            f.MarginWidth = a.value.left(3);
        else if (a.name == QLatin1String("MARGINHEIGHT"))
            f.MarginHeight = a.value.left(3);
        else if (a.name == QLatin1String("SCROLLING"))
            f.Scrolling = a.value.compare(QLatin1String("YES"), Qt::CaseInsensitive) == 0  ? 1
                          : a.value.compare(QLatin1String("NO"), Qt::CaseInsensitive) == 0 ? 2
                                                                                           : 0;
        else if (a.name == QLatin1String("NORESIZE"))
            f.NoResize = -1;
        else
            extra.append(a.raw);
    }
    f.Extra = extra.join(QLatin1Char(' ')).left(256);
    return f;
}

// A set with both ROWS and COLS fills its grid row by row: rows of column sets.
void makeGrid(Node &set)
{
    if (set.rows.isEmpty() || set.cols.isEmpty())
        return;
    std::vector<std::unique_ptr<Node>> cells = std::move(set.children);
    set.children.clear();
    qsizetype next = 0;
    for (qsizetype r = 0; r < set.rows.size(); ++r) {
        auto row = std::make_unique<Node>();
        row->isSet = true;
        row->cols = set.cols;
        for (qsizetype c = 0; c < set.cols.size() && next < qsizetype(cells.size()); ++c)
            row->children.push_back(std::move(cells[size_t(next++)]));
        set.children.push_back(std::move(row));
    }
    set.cols.clear();
}

struct Segment {
    bool vertical;
    int at, low, high;
};

class Placer
{
public:
    Placer(float scaleX, float scaleY) : m_scaleX(scaleX), m_scaleY(scaleY) {}

    QList<FrameSpec> frames;

    void place(const Node &node, int top, int left, int bottom, int right)
    {
        const QStringList &sizes = node.cols.isEmpty() ? node.rows : node.cols;
        const qsizetype n = node.isSet ? qMax<qsizetype>(1, sizes.size()) : 1;
        if (!node.isSet || n == 1) {
            if (node.isSet && !node.children.empty()) {
                place(*node.children.front(), top, left, bottom, right);
                return;
            }
            FrameSpec f = node.isSet ? FrameSpec() : node.frame;
            f.Top = qint16(top);
            f.Left = qint16(left);
            f.Bottom = qint16(bottom);
            f.Right = qint16(right);
            frames.append(f);
            return;
        }
        const bool columns = !node.cols.isEmpty();
        const int low = columns ? left : top;
        const int high = columns ? right : bottom;
        const QList<int> cuts =
            cutsFor(sizes, columns, low, high, columns ? top : left, columns ? bottom : right);
        for (qsizetype i = 0; i < n; ++i) {
            const int from = i == 0 ? low : cuts[i - 1];
            const int to = i == n - 1 ? high : cuts[i];
            static const Node empty;
            const Node &child = i < qsizetype(node.children.size()) ? *node.children[size_t(i)] : empty;
            if (columns)
                place(child, top, from, bottom, to);
            else
                place(child, from, left, to, right);
        }
    }

private:
    // The n - 1 inner cuts between low and high for these sizes, across [across0, across1].
    QList<int> cutsFor(const QStringList &sizes, bool columns, int low, int high, int across0, int across1)
    {
        const qsizetype n = sizes.size();
        const int total = high - low + 1;
        const float scale = columns ? m_scaleX : m_scaleY;
        enum Unit { Percent = 0, Pixels = 1, Share = 2 };
        QList<Unit> units;
        QList<double> values, lengths;
        double fixed = 0, shares = 0;
        for (const QString &entry : sizes) {
            const QString s = entry.trimmed();
            bool ok = false;
            if (s.endsWith(QLatin1Char('%'))) {
                const double v = s.chopped(1).toDouble(&ok);
                units.append(ok ? Percent : Share);
                values.append(ok ? v : 1);
            } else if (s.endsWith(QLatin1Char('*'))) {
                const double v = s.chopped(1).isEmpty() ? 1 : s.chopped(1).toDouble(&ok);
                units.append(Share);
                values.append(s.chopped(1).isEmpty() || ok ? v : 1);
            } else {
                const double v = s.toDouble(&ok);
                units.append(ok ? Pixels : Share);
                values.append(ok ? v : 1);
            }
            const double length = units.last() == Percent  ? values.last() / 100 * total
                                  : units.last() == Pixels ? values.last() / scale
                                                           : 0;
            lengths.append(length);
            fixed += length;
            shares += units.last() == Share ? values.last() : 0;
        }
        const double rest = qMax(0.0, total - fixed);
        for (qsizetype i = 0; i < n; ++i)
            if (units[i] == Share)
                lengths[i] = shares > 0 ? rest * values[i] / shares : 0;
        double sum = 0;
        for (double l : lengths)
            sum += l;
        const double stretch = sum > 0 ? total / sum : 1;

        const int step = (high - low) / n >= Grid ? Grid : 1;
        QList<int> cuts;
        int prev = low;
        double estimate = low;
        for (qsizetype i = 0; i + 1 < n; ++i) {
            estimate += lengths[i] * stretch;
            const int first = prev + step;
            const int last = high - step * int(n - 1 - i);
            int best = qBound(first, int(std::lround(estimate / step)) * step, qMax(first, last));
            double bestScore = 1e18;
            for (int x = (first + step - 1) / step * step; x <= last; x += step) {
                if (std::abs(x - estimate) > 10 * Grid)
                    continue;
                const int size = x - prev + 1;
                bool matches = writtenAs(units[i], values[i], size, total, scale, false);
                if (i + 2 == n) // the last cut sets the last piece too
                    matches =
                        matches && writtenAs(units[i + 1], values[i + 1], high - x + 1, total, scale, true);
                const double score = (conflicts(!columns, x, across0, across1) ? 1e9 : 0) +
                                     (matches ? 0 : 1e6) + std::abs(x - estimate);
                if (score < bestScore) {
                    bestScore = score;
                    best = x;
                }
            }
            m_segments.append({columns, best, across0, across1});
            cuts.append(best);
            prev = best;
        }
        return cuts;
    }

    // Whether a piece of size twips comes out as its value again, as the frame sets are written.
    static bool writtenAs(int unit, double value, int size, int total, float scale, bool last)
    {
        if (unit == 0) // percent
            return int(std::floor(double(size) / total * 100)) + (last ? 1 : 0) == int(value);
        if (unit == 1) // pixels
            return int(std::floor(float(size) * scale)) == int(value);
        return true;
    }

    // A line that would meet another, parallel one end to end runs on through it, and the frame
    // sets would not be found again.
    bool conflicts(bool horizontal, int at, int low, int high) const
    {
        for (const Segment &s : m_segments)
            if (s.vertical == !horizontal && s.at == at && (s.high == low || s.low == high))
                return true;
        return false;
    }

    float m_scaleX, m_scaleY;
    QList<Segment> m_segments;
};

} // namespace

std::optional<FrameSetRead> ReadFrameSetAt(const QString &text, int caret, float scaleX, float scaleY)
{
    std::vector<Node *> open; // the sets open at this tag, outermost first
    std::unique_ptr<Node> root;
    qsizetype rootStart = -1;
    qsizetype i = 0;
    while ((i = text.indexOf(QLatin1Char('<'), i)) >= 0) {
        if (QStringView(text).mid(i, 4) == QLatin1String("<!--")) {
            const qsizetype close = text.indexOf(QLatin1String("-->"), i + 4);
            if (close < 0)
                break;
            i = close + 3;
            continue;
        }
        const qsizetype end = tagEnd(text, i);
        if (end < 0)
            break;
        const QStringView inside = QStringView(text).mid(i + 1, end - i - 1);
        qsizetype nameEnd = 0;
        while (nameEnd < inside.size() && !inside[nameEnd].isSpace())
            ++nameEnd;
        const QString name = inside.left(nameEnd).toString().toUpper();
        if (name == QLatin1String("FRAMESET")) {
            if (open.empty()) {
                if (i > caret)
                    return std::nullopt; // the frame sets from here on are behind the caret
                root = std::make_unique<Node>();
                rootStart = i;
                open.push_back(root.get());
            } else {
                open.back()->children.push_back(std::make_unique<Node>());
                open.push_back(open.back()->children.back().get());
            }
            Node &set = *open.back();
            set.isSet = true;
            for (const Attribute &a : attributes(inside.mid(nameEnd))) {
                if (a.name == QLatin1String("ROWS"))
                    set.rows = a.value.split(QLatin1Char(','));
                else if (a.name == QLatin1String("COLS"))
                    set.cols = a.value.split(QLatin1Char(','));
            }
        } else if (name == QLatin1String("FRAME") && !open.empty()) {
            auto leaf = std::make_unique<Node>();
            leaf->frame = frameOf(attributes(inside.mid(nameEnd)));
            open.back()->children.push_back(std::move(leaf));
        } else if (name == QLatin1String("/FRAMESET") && !open.empty()) {
            makeGrid(*open.back());
            open.pop_back();
            if (open.empty()) {
                qsizetype stop = end + 1;
                if (caret <= stop) {
                    if (QStringView(text).mid(stop, 2) == QLatin1String("\r\n"))
                        stop += 2;
                    qsizetype start = rootStart;
                    while (start > 0 &&
                           (text[start - 1] == QLatin1Char(' ') || text[start - 1] == QLatin1Char('\t')))
                        --start;
                    if (start > 0 && text[start - 1] != QLatin1Char('\n'))
                        start = rootStart;
                    Placer placer(scaleX, scaleY);
                    placer.place(*root, 0, 0, FrameModel::BoxHeight, FrameModel::BoxWidth);
                    FrameSetRead read;
                    read.start = int(start);
                    read.end = int(stop);
                    read.frames = placer.frames;
                    const QStringList &sizes = root->cols.isEmpty() ? root->rows : root->cols;
                    for (const QString &size : sizes) {
                        const QString s = size.trimmed();
                        if (!s.isEmpty() && !s.endsWith(QLatin1Char('%')) && !s.endsWith(QLatin1Char('*')))
                            read.percent = false;
                    }
                    return read;
                }
                root.reset();
            }
        }
        i = end + 1;
    }
    return std::nullopt;
}

} // namespace pw
