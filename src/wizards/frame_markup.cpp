#include "wizards/frame_markup.h"

#include "core/app_state.h"

#include <cmath>

namespace pw
{

namespace
{

struct Cut {
    int start;
    int end;
};

class Builder
{
public:
    Builder(const FrameModel &model, const FrameSetOptions &options,
            const std::function<void(const MarkupPiece &)> &write, const std::function<void()> &leaf)
        : m_model(model), m_options(options), m_write(write), m_leaf(leaf)
    {
    }

    void build(int top, int left, int bottom, int right, int depth)
    {
        const QString indent(4 * depth, QLatin1Char(' '));
        // Columns win over rows: a rectangle with both kinds of full line is a COLS set.
        QList<Cut> cuts = spanningCuts(LineKind::Vertical, left, right, top + 1, top, bottom);
        bool columns = !cuts.isEmpty();
        if (!columns)
            cuts = spanningCuts(LineKind::Horizontal, top, bottom, left + 1, left, right);
        if (cuts.isEmpty()) {
            writeLeaf(indent, m_model.FrameHit(left + 1, top + 1));
            return;
        }
        cuts.append({cuts.last().end, columns ? right : bottom});
        const int total = columns ? right - left + 1 : bottom - top + 1;
        const float scale = columns ? m_options.scaleX : m_options.scaleY;
        QString sizes;
        for (qsizetype i = 0; i < cuts.size(); ++i) {
            const int size = cuts[i].end - cuts[i].start + 1;
            if (m_options.percent) {
                int percent = int(std::floor(double(size) / total * 100));
                if (i == cuts.size() - 1)
                    percent += 1; // the whole parts alone would fall short of 100
                sizes += QString::number(percent) + QStringLiteral("%,");
            } else {
                sizes += QString::number(int(std::floor(float(size) * scale))) + QLatin1Char(',');
            }
        }
        sizes.chop(1);
        tag(indent + (columns ? QStringLiteral("<FRAMESET COLS=\"") : QStringLiteral("<FRAMESET ROWS=\"")) +
            sizes + QStringLiteral("\">") + LineEnd);
        for (const Cut &cut : std::as_const(cuts)) {
            if (columns)
                build(top, cut.start, bottom, cut.end, depth + 1);
            else
                build(cut.start, left, cut.end, right, depth + 1);
        }
        tag(indent + QStringLiteral("</FRAMESET>") + LineEnd);
    }

private:
    // Lines of this kind across the rectangle from `from` to `to`, scanned one unit at a time
    // along `probe`: a cut only where the line runs exactly from low to high, no further.
    QList<Cut> spanningCuts(LineKind kind, int from, int to, int probe, int low, int high) const
    {
        QList<Cut> cuts;
        int prev = from;
        for (int at = from + 1; at <= to - 1; ++at) {
            const LineFound line =
                kind == LineKind::Vertical ? m_model.findLine(at, probe) : m_model.findLine(probe, at);
            if (line.kind == kind && line.low == low && line.high == high) {
                cuts.append({prev, at});
                prev = at;
            }
        }
        return cuts;
    }

    void writeLeaf(const QString &indent, int index)
    {
        const QString text = index >= 1 ? FrameTag(m_model.frame(index)) : QStringLiteral("<FRAME>");
        tag(indent + text + LineEnd);
        if (m_leaf)
            m_leaf();
    }

    void tag(const QString &text) { m_write({text, true}); }

    const FrameModel &m_model;
    const FrameSetOptions &m_options;
    const std::function<void(const MarkupPiece &)> &m_write;
    const std::function<void()> &m_leaf;
};

void appendQuoted(QString &tag, const char *name, const QString &value)
{
    const QString trimmed = TrimTrailing(value);
    if (!trimmed.isEmpty())
        tag += QLatin1Char(' ') + QLatin1String(name) + QStringLiteral("=\"") + trimmed + QLatin1Char('"');
}

} // namespace

QString FrameTag(const FrameSpec &frame)
{
    QString tag = QStringLiteral("<FRAME");
    appendQuoted(tag, "NAME", frame.Name);
    appendQuoted(tag, "SRC", frame.Source);
    appendQuoted(tag, "MARGINWIDTH", frame.MarginWidth);
    appendQuoted(tag, "MARGINHEIGHT", frame.MarginHeight);
    if (frame.Scrolling == 1)
        tag += QStringLiteral(" SCROLLING=\"YES\"");
    else if (frame.Scrolling == 2)
        tag += QStringLiteral(" SCROLLING=\"NO\"");
    if (frame.NoResize)
        tag += QStringLiteral(" NORESIZE");
    const QString extra = TrimTrailing(frame.Extra);
    if (!extra.isEmpty())
        tag += QLatin1Char(' ') + extra;
    return tag + QLatin1Char('>');
}

void BuildFrameSets(const FrameModel &model, const FrameSetOptions &options,
                    const std::function<void(const MarkupPiece &)> &write, const std::function<void()> &leaf)
{
    Builder(model, options, write, leaf).build(0, 0, FrameModel::BoxHeight, FrameModel::BoxWidth, 0);
}

QList<MarkupPiece> FrameSetPieces(const FrameModel &model, const FrameSetOptions &options)
{
    QList<MarkupPiece> pieces;
    BuildFrameSets(model, options, [&pieces](const MarkupPiece &piece) { pieces.append(piece); });
    return pieces;
}

QString NoFramesSection(const QString &fileText, const std::function<void(qint64, qint64)> &progress)
{
    static const QString bodyStart = QStringLiteral("<BODY");
    static const QString bodyEnd = QStringLiteral("</BODY>");
    QString out;
    bool inBody = false;
    qint64 done = 0;
    const qint64 total = fileText.size();
    qsizetype from = 0;
    while (from < fileText.size()) {
        // A line ends at CR LF, a lone LF or a lone CR.
        qsizetype end = from;
        while (end < fileText.size() && fileText[end] != QLatin1Char('\r') &&
               fileText[end] != QLatin1Char('\n'))
            ++end;
        const QStringView line = QStringView(fileText).mid(from, end - from);
        from = end;
        if (from < fileText.size() && fileText[from] == QLatin1Char('\r'))
            ++from;
        if (from < fileText.size() && fileText[from] == QLatin1Char('\n'))
            ++from;
        done += line.size();
        if (progress)
            progress(done, total);

        if (!inBody) {
            const qsizetype p = line.indexOf(bodyStart, 0, Qt::CaseInsensitive);
            if (p >= 0) {
                inBody = true;
                out += line.mid(p);
                out += LineEnd;
            }
            continue;
        }
        const qsizetype p = line.indexOf(bodyEnd, 0, Qt::CaseInsensitive);
        if (p >= 0) {
            out += line.left(p);
            out += bodyEnd + LineEnd;
            break;
        }
        out += line;
        out += LineEnd;
    }
    return out;
}

QString FramePageHeader(const QString &title)
{
    return QStringLiteral("<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 3.2//EN\">") + LineEnd +
           QStringLiteral("<HTML>") + LineEnd + QStringLiteral("<HEAD>") + LineEnd +
           QStringLiteral("<TITLE>") + title + QStringLiteral("</TITLE>") + LineEnd +
           QStringLiteral("</HEAD>") + LineEnd;
}

} // namespace pw
