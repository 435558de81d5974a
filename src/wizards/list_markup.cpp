#include "wizards/list_markup.h"

#include "core/app_state.h"

namespace pw {

namespace {

const char *const OrderedTypes[] = {"", "A", "a", "I", "i"};
const char *const UnorderedTypes[] = {"", "disc", "circle", "square"};

void appendType(QString &tag, int type, const char *const *values, int count)
{
    if (type >= 1 && type < count)
        tag += QStringLiteral(" TYPE=\"") + QLatin1String(values[type]) + QLatin1Char('"');
}

} // namespace

QString JoinedDefinition(const ListEntry &entry)
{
    return entry.text + DefinitionSeparator + entry.definition;
}

bool ListStartAccepted(const QString &start)
{
    return TrimTrailing(start).isEmpty() || IsNumeric(start);
}

QList<MarkupPiece> ListPieces(const ListOptions &options)
{
    QString open;
    QString close;
    switch (options.kind) {
    case ListKind::Ordered:
        open = QStringLiteral("<OL");
        if (!TrimTrailing(options.start).isEmpty())
            open += QStringLiteral(" START=\"") + options.start + QLatin1Char('"');
        appendType(open, options.type, OrderedTypes, int(std::size(OrderedTypes)));
        close = QStringLiteral("</OL>");
        break;
    case ListKind::Unordered:
        open = QStringLiteral("<UL");
        appendType(open, options.type, UnorderedTypes, int(std::size(UnorderedTypes)));
        close = QStringLiteral("</UL>");
        break;
    case ListKind::Menu:
        open = QStringLiteral("<MENU");
        close = QStringLiteral("</MENU>");
        break;
    case ListKind::Definition:
        open = options.compact ? QStringLiteral("<DL COMPACT") : QStringLiteral("<DL");
        close = QStringLiteral("</DL>");
        break;
    }

    QList<MarkupPiece> pieces;
    pieces.reserve(2 + 4 * options.entries.size());
    pieces.append({open + QLatin1Char('>') + LineEnd, true});
    for (const ListEntry &entry : options.entries) {
        if (options.kind == ListKind::Definition) {
            pieces.append({QStringLiteral("    <DT>"), true});
            pieces.append({entry.text + LineEnd, false});
            pieces.append({QStringLiteral("        <DD>"), true});
            pieces.append({entry.definition + LineEnd, false});
        } else {
            pieces.append({QStringLiteral("    <LI>"), true});
            pieces.append({entry.text + LineEnd, false});
        }
    }
    if (options.entries.isEmpty())
        pieces.append({LineEnd, false});
    pieces.append({close + LineEnd, true});
    return pieces;
}

} // namespace pw
