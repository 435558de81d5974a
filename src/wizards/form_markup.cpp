#include "wizards/form_markup.h"

#include "core/app_state.h"

namespace pw {

namespace {

const QString Indent = QStringLiteral("    ");

QString attribute(const char *name, const QString &value)
{
    return QLatin1Char(' ') + QLatin1String(name) + QStringLiteral("=\"") + value + QLatin1Char('"');
}

void appendIfSet(QString &tag, const char *name, const QString &value)
{
    if (!value.isEmpty())
        tag += attribute(name, value);
}

void appendExtra(QString &tag, const QString &extra)
{
    if (!extra.isEmpty())
        tag += QLatin1Char(' ') + extra;
}

QString inputStart(const char *type)
{
    return Indent + QStringLiteral("<INPUT TYPE=\"") + QLatin1String(type) + QLatin1Char('"');
}

// A tag closed on its line, then what stands behind it (possibly nothing) and the line end as text.
void tagWithText(FormMarkup &out, const QString &tag, const QString &text)
{
    out.pieces.append({tag + QLatin1Char('>'), true});
    out.pieces.append({text + LineEnd, false});
}

void wholeLine(FormMarkup &out, const QString &tag)
{
    out.pieces.append({tag + QLatin1Char('>') + LineEnd, true});
}

} // namespace

FormFault CheckFormElement(const FormElementOptions &o)
{
    static const QString nameMissing = QStringLiteral("You must specify a Name!");
    static const QString valueMissing = QStringLiteral("You must specify a Value!");
    switch (o.kind) {
    case FormKind::Form:
        if (o.action.isEmpty())
            return {FormField::Action, QStringLiteral("You must specify an Action!")};
        break;
    case FormKind::Checkbox:
    case FormKind::Radio:
    case FormKind::Hidden:
        if (o.name.isEmpty())
            return {FormField::Name, nameMissing};
        if (o.value.isEmpty())
            return {FormField::Value, valueMissing};
        break;
    case FormKind::Password:
    case FormKind::Select:
    case FormKind::Text:
    case FormKind::Textarea:
        if (o.name.isEmpty())
            return {FormField::Name, nameMissing};
        break;
    case FormKind::Reset:
    case FormKind::Submit:
        if (o.value.isEmpty())
            return {FormField::Value, valueMissing};
        break;
    case FormKind::Option:
        break;
    }
    return {};
}

FormMarkup FormElementMarkup(const FormElementOptions &o)
{
    FormMarkup out;
    QString tag;
    switch (o.kind) {
    case FormKind::Form:
        tag = QStringLiteral("<FORM") + attribute("ACTION", o.action);
        appendIfSet(tag, "NAME", o.name);
        appendIfSet(tag, "ENCTYPE", o.encType);
        tag += attribute("METHOD", o.post ? QStringLiteral("POST") : QStringLiteral("GET"));
        appendExtra(tag, o.extraTag);
        wholeLine(out, tag);
        out.pieces.append({LineEnd + QStringLiteral("</FORM>"), true});
        out.caretBack = 9; // CR LF and "</FORM>": the caret waits on the line between
        break;
    case FormKind::Checkbox:
    case FormKind::Radio:
        tag = inputStart(o.kind == FormKind::Checkbox ? "CHECKBOX" : "RADIO") + attribute("NAME", o.name)
              + attribute("VALUE", o.value);
        appendExtra(tag, o.extraTag);
        if (o.checked)
            tag += QStringLiteral(" CHECKED");
        tagWithText(out, tag, o.text);
        break;
    case FormKind::Hidden:
        tag = inputStart("HIDDEN") + attribute("NAME", o.name) + attribute("VALUE", o.value);
        appendExtra(tag, o.extraTag);
        wholeLine(out, tag);
        break;
    case FormKind::Password:
        tag = inputStart("PASSWORD") + attribute("NAME", o.name) + attribute("VALUE", o.value);
        appendIfSet(tag, "SIZE", o.size);
        appendExtra(tag, o.extraTag);
        wholeLine(out, tag);
        break;
    case FormKind::Reset:
    case FormKind::Submit:
        tag = inputStart(o.kind == FormKind::Reset ? "RESET" : "SUBMIT") + attribute("VALUE", o.value);
        appendExtra(tag, o.extraTag);
        wholeLine(out, tag);
        break;
    case FormKind::Option:
        tag = Indent + Indent + QStringLiteral("<OPTION");
        appendExtra(tag, o.extraTag);
        if (o.checked)
            tag += QStringLiteral(" SELECTED");
        tagWithText(out, tag, o.text);
        break;
    case FormKind::Text:
        tag = inputStart("TEXT") + attribute("NAME", o.name) + attribute("VALUE", o.value);
        appendIfSet(tag, "SIZE", o.size);
        appendIfSet(tag, "MAXLENGTH", o.maxLength);
        appendExtra(tag, o.extraTag);
        wholeLine(out, tag);
        break;
    case FormKind::Textarea:
        tag = Indent + QStringLiteral("<TEXTAREA") + attribute("NAME", o.name);
        appendIfSet(tag, "ROWS", o.rows);
        appendIfSet(tag, "COLS", o.cols);
        appendExtra(tag, o.extraTag);
        wholeLine(out, tag);
        out.pieces.append({o.value + LineEnd, false});
        out.pieces.append({QStringLiteral("</TEXTAREA>") + LineEnd, true});
        break;
    case FormKind::Select:
        tag = Indent + QStringLiteral("<SELECT") + attribute("NAME", o.name) + attribute("SIZE", o.size);
        if (o.multiple)
            tag += QStringLiteral(" MULTIPLE");
        wholeLine(out, tag);
        for (const QString &entry : o.entries) {
            // An entry without ">" is all tag: nothing of it is text.
            const qsizetype close = entry.indexOf(QLatin1Char('>'));
            const qsizetype tagLength = close < 0 ? entry.size() : close + 1;
            out.pieces.append({Indent + Indent + entry.left(tagLength), true});
            out.pieces.append({entry.mid(tagLength) + LineEnd, false});
        }
        out.pieces.append({Indent + QStringLiteral("</SELECT>") + LineEnd, true});
        break;
    }
    return out;
}

QString SelectOptionEntry(const QString &text, bool selected)
{
    return QStringLiteral("<OPTION") + (selected ? QStringLiteral(" SELECTED") : QString()) + QLatin1Char('>')
           + TrimTrailing(text);
}

bool IsSelectedOptionEntry(const QString &entry)
{
    return entry.contains(QLatin1String("SELECTED>"));
}

} // namespace pw
