#pragma once
// What the benchmark programs share: the clock they report against, the
// memory and processor time of their process tree, and the lines they print
// for bench/run.sh.
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QTextStream>

#include <unistd.h>

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

// The fields of /proc/PID/stat from the third on, after the name (which
// may hold spaces and ends with ')'); empty when the process is gone.
inline QList<QByteArray> statFields(qint64 pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return {};
    const QByteArray line = stat.readAll();
    return line.mid(line.lastIndexOf(')') + 2).split(' ');
}

// This process and every process it started (the engine's zygotes,
// renderers and helpers).
inline QList<qint64> treePids()
{
    QHash<qint64, QList<qint64>> children;
    for (const QString& entry : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        bool isPid = false;
        const qint64 pid = entry.toLongLong(&isPid);
        if (!isPid)
            continue;
        // The parent is the fourth field.
        const QList<QByteArray> fields = statFields(pid);
        if (fields.size() > 1)
            children[fields[1].toLongLong()].append(pid);
    }
    QList<qint64> tree;
    QList<qint64> pending{qint64(getpid())};
    while (!pending.isEmpty()) {
        const qint64 pid = pending.takeLast();
        tree.append(pid);
        pending += children.value(pid);
    }
    return tree;
}

// The proportional set size, in KiB, of the process tree: shared pages are
// split between those that share them, so the sum is what the tree costs.
inline qint64 treePssKiB()
{
    qint64 total = 0;
    for (qint64 pid : treePids()) {
        QFile rollup(QStringLiteral("/proc/%1/smaps_rollup").arg(pid));
        if (!rollup.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray& line : rollup.readAll().split('\n'))
            if (line.startsWith("Pss:"))
                total += line.mid(4).trimmed().split(' ').first().toLongLong();
    }
    return total;
}

// The processor time, in ms, the process tree has used so far, in user and
// system mode.
inline qint64 treeCpuMs()
{
    qint64 ticks = 0;
    for (qint64 pid : treePids()) {
        // utime and stime, the 14th and 15th fields.
        const QList<QByteArray> fields = statFields(pid);
        if (fields.size() > 12)
            ticks += fields[11].toLongLong() + fields[12].toLongLong();
    }
    return ticks * 1000 / sysconf(_SC_CLK_TCK);
}

} // namespace bench
