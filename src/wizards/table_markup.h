#pragma once

#include "wizards/table_model.h"
#include "wizards/wizard_conduct.h"

#include <functional>

namespace pw {

// What the dialog adds to the model for the markup.
struct TableOptions {
    QString caption;       // as typed
    bool dataPlace = false; // an empty element reads "Data Element r, c"
};

// The table's markup, piece by piece in the order it is written: tag pieces and text pieces, each
// line ending in CR LF. progress(done, total) comes before each element, displaced ones included,
// with done its flat position. Nothing is escaped; texts lose their trailing blanks.
void GenerateTable(const TableModel &model, const TableOptions &options,
                   const std::function<void(const MarkupPiece &)> &write,
                   const std::function<void(int done, int total)> &progress = {});
QList<MarkupPiece> TablePieces(const TableModel &model, const TableOptions &options);

} // namespace pw
