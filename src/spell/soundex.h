#pragma once

#include <QString>

namespace pw {

// The sound key of the word store: the first letter in upper case, then one digit for every
// further letter (a doubled letter gives "0"), cut or padded with "0" to six characters.
// "robert" gives "R01063", "hello" gives "H04000".
QString SoundexName(const QString &name);
// True when argument has exactly six characters.
bool ValidSoundex(const QString &argument);
// True when counter equals the length of surname.
bool EndofName(const QString &surname, int counter);

} // namespace pw
