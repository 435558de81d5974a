#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace pw {

// The pieces of a file as the document takes them: every line end (CR LF, CR or LF) one '\n', in
// one pass, and a line longer than a display block broken into blocks, after a '>' or a blank in its
// last quarter where there is one. Kept from piece to piece, so a line may run across pieces.
class DisplayBlocks
{
public:
    explicit DisplayBlocks(int limit) : m_limit(limit) {}

    QString convert(QStringView piece);

    std::vector<int> breaks; // document positions

private:
    // Breaks the block that ends at o: behind its last '>' or blank in its last quarter (and in this
    // piece), else at o. Returns the new end.
    QChar *breakBlock(QChar *begin, QChar *o);

    int m_limit;
    int m_column = 0;
    int m_written = 0;
};

} // namespace pw
