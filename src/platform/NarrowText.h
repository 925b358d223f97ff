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

// A text file's bytes: UTF-8 when they are, else the old 8-bit code page,
// read as Latin-1.
QString decodeText(const QByteArray& bytes);

} // namespace platform
