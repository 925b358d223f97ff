#pragma once
// What the benchmark programs share: the clock they report against and the
// lines they print for bench/run.sh.
#include <QDateTime>
#include <QTextStream>

namespace bench {

// Milliseconds since the epoch, comparable with the launching script's clock.
inline qint64 now()
{
    return QDateTime::currentMSecsSinceEpoch();
}

inline void report(const char* name, qint64 value)
{
    QTextStream(stdout) << name << ' ' << value << Qt::endl;
}

} // namespace bench
