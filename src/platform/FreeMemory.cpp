#include "FreeMemory.h"

#include <QFile>
#include <QList>

// Any header of the C library says which library it is.
#include <cstdlib>
#if defined(__GLIBC__)
#include <malloc.h>
#endif
#if defined(Q_OS_WIN)
#include <windows.h>
#endif

namespace platform {

void returnFreeMemory()
{
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
}

namespace {

#if defined(Q_OS_LINUX)
// A figure of /proc/meminfo ("MemTotal:  16318664 kB"), in KiB, or -1.
qint64 memInfoField(const QByteArray& text, const QByteArray& name)
{
    const QByteArray prefix = name + ':';
    for (const QByteArray& line : text.split('\n')) {
        if (!line.startsWith(prefix))
            continue;
        const QList<QByteArray> words = line.mid(prefix.size()).simplified().split(' ');
        bool ok = false;
        const qint64 value = words.value(0).toLongLong(&ok);
        return ok && words.value(1) == "kB" ? value : -1;
    }
    return -1;
}
#endif

} // namespace

bool systemMemoryLow()
{
#if defined(Q_OS_LINUX)
    QFile file(QStringLiteral("/proc/meminfo"));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray text = file.readAll();
    const qint64 total = memInfoField(text, "MemTotal");
    const qint64 available = memInfoField(text, "MemAvailable");
    return total > 0 && available >= 0 && available < total / 10;
#elif defined(Q_OS_WIN)
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof(status);
    return GlobalMemoryStatusEx(&status) && status.ullAvailPhys < status.ullTotalPhys / 10;
#else
    return false;
#endif
}

} // namespace platform
