#pragma once

#include "FilterEngine.h"

#include <QString>
#include <QStringList>

namespace filters {

// The engine for a set of list files. It comes from the compiled form in
// the cache file when that was made from the same files as they are now
// (each one's path, size and time of change), else from the lists' text,
// and is then written there, whole or not at all, for the next start.
class FilterCache
{
public:
    explicit FilterCache(QString file) : file_(std::move(file)) {}

    // A list that cannot be read adds nothing.
    FilterEngine engineFor(const QStringList& lists);
    // Whether the last engine came from the cache file.
    bool lastFromCache() const { return fromCache_; }

private:
    QString file_;
    bool fromCache_ = false;
};

} // namespace filters
