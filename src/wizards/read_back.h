#pragma once

#include "wizards/form_markup.h"
#include "wizards/list_markup.h"

#include <QString>

#include <optional>

namespace pw {

// A construct found around a position of a document's text, read back into the options that
// would place it again, and the stretch of text it covers: the indentation in front of its start
// tag, the tags and what stands between them, and the line end behind its end tag.
template<typename Options>
struct FoundConstruct {
    Options options;
    int from = 0;
    int length = 0;
};

// The innermost <OL>, <UL>, <MENU> or <DL> whose tags enclose position (strictly between the "<"
// of the start tag and the ">" of the end tag). Nothing when there is none, or when the wizard
// could not place it again as it stands: an attribute the tab has no field for, a type it doesn't
// offer, an entry tag with attributes, or text in front of the first entry.
std::optional<FoundConstruct<ListOptions>> ListAround(const QString &text, int position);

// The same for a <SELECT>: its name, size, MULTIPLE and its options as the Select tab's entries
// (each option's tag as written, then its text).
std::optional<FoundConstruct<FormElementOptions>> SelectAround(const QString &text, int position);

} // namespace pw
