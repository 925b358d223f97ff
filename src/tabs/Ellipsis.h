#pragma once
// Short form of a title or address for tab captions, tooltips and lists: the
// text itself when it fits in width narrow characters, else its longest
// beginning that stays below width together with " ...", and " ...".
#include <QString>

QString ellipsis(const QString& text, int width);
