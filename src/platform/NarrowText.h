#pragma once
// Length rules of the old narrow (ANSI) code page: every character above
// U+007F took two bytes there, and every limit the program keeps on texts is
// counted that way.
#include <QString>

namespace platform {

int narrowLength(const QString& text);

// The longest beginning of text whose narrow length is at most limit; a
// two-byte character is never split.
QString narrowLeft(const QString& text, int limit);

// A caption of a generated menu tool: the text itself when its narrow length
// is at most maxBytes, else its longest beginning under maxBytes followed by
// " ...".
QString shortenCaption(const QString& text, int maxBytes);

} // namespace platform
