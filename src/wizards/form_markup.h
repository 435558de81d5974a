#pragma once

#include "wizards/wizard_conduct.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace pw {

// The eleven kinds of form element, in the order of the Form Wizard's tabs.
enum class FormKind {
    Form = 1, Checkbox, Hidden, Option, Password, Radio, Reset, Select, Submit, Text, Textarea
};
constexpr int FormKindCount = 11;

// What a Form Wizard tab holds, as typed. Each kind reads only its own fields; the number fields
// are empty when unset.
struct FormElementOptions {
    FormKind kind = FormKind::Text;
    QString name;
    QString value;      // the initial value of Text, Password and Textarea too
    QString text;       // shown behind a Checkbox, Radio or Option
    QString extraTag;   // raw markup
    bool checked = false; // Checkbox and Radio CHECKED, Option SELECTED
    // Form
    QString action;
    QString encType;
    bool post = true;
    // Numbers
    QString size;       // Password, Select (written even when empty) and Text
    QString maxLength;  // Text
    QString rows;       // Textarea
    QString cols;       // Textarea
    // Select
    bool multiple = false;
    QStringList entries; // finished "<OPTION...>text" strings
};

// The first required field that is empty, in the order a kind checks them.
enum class FormField { None, Name, Value, Action };
struct FormFault {
    FormField field = FormField::None;
    QString message;
};
FormFault CheckFormElement(const FormElementOptions &options);

// A Place's output: tag pieces go in as PlaceSingleTag writes them, text pieces straight into the
// selection. caretBack is how far the caret steps back afterwards (between a form's two tags).
struct FormMarkup {
    QList<MarkupPiece> pieces;
    int caretBack = 0;
};
FormMarkup FormElementMarkup(const FormElementOptions &options);

// An entry of the Select tab's option list: "<OPTION", " SELECTED" when marked, ">", the text
// without its trailing blanks.
QString SelectOptionEntry(const QString &text, bool selected);
// Whether an entry is the list's selected one, by the exact capitals Add writes.
bool IsSelectedOptionEntry(const QString &entry);

} // namespace pw
