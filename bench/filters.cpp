// The filter lists' engine on its own: bench_filters REQUESTS LIST...
// reads the lists from text and builds the engine ("load <ms>", "memory
// <KiB>" of heap it holds), reads it again from its compiled form in a cache
// file ("cached <ms>"), then decides every request of REQUESTS (lines
// of URL<TAB>SOURCE-PAGE-URL<TAB>TYPE), each timed from its address to the
// decision: "median <ns>", "p99 <ns>", "requests <n>", "blocked <n>".
#include "protect/filters/FilterCache.h"
#include "protect/filters/FilterEngine.h"
#include "protect/filters/FilterRequest.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <malloc.h>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

QByteArray readAll(const char* path)
{
    QFile file(QString::fromLocal8Bit(path));
    if (!file.open(QIODevice::ReadOnly)) {
        std::cerr << "bench_filters: cannot read " << path << '\n';
        std::exit(2);
    }
    return file.readAll();
}

struct Line
{
    std::string url, source;
    filters::RequestType type;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3)
        return 2;
    std::vector<Line> lines;
    const QByteArray requests = readAll(argv[1]);
    for (const QByteArray& line : requests.split('\n')) {
        const QList<QByteArray> fields = line.split('\t');
        if (fields.size() != 3)
            continue;
        if (const auto type = filters::requestTypeNamed(fields[2].toStdString()))
            lines.push_back({fields[0].toStdString(), fields[1].toStdString(), *type});
    }
    std::vector<QByteArray> lists;
    for (int i = 2; i < argc; ++i)
        lists.push_back(readAll(argv[i]));

    const size_t heapBefore = mallinfo2().uordblks;
    const auto loadStart = Clock::now();
    filters::FilterEngine engine;
    for (const QByteArray& list : lists)
        engine.addList(std::string_view(list.constData(), size_t(list.size())));
    engine.build();
    const auto loaded = Clock::now();
    malloc_trim(0);
    const size_t heapAfter = mallinfo2().uordblks;

    QTemporaryDir cacheDir;
    filters::FilterCache cache(cacheDir.filePath("filters.bin"));
    QStringList paths;
    for (int i = 2; i < argc; ++i)
        paths << QString::fromLocal8Bit(argv[i]);
    cache.engineFor(paths);
    const auto cacheStart = Clock::now();
    const filters::FilterEngine cached = cache.engineFor(paths);
    const auto cacheEnd = Clock::now();
    if (!cache.lastFromCache() || cached.counts().network != engine.counts().network) {
        std::cerr << "bench_filters: the cache did not give the engine back\n";
        return 1;
    }

    std::vector<int64_t> times;
    times.reserve(lines.size());
    int blocked = 0;
    for (const Line& line : lines) {
        const auto start = Clock::now();
        const auto request = filters::FilterRequest::make(line.url, line.source, line.type);
        const bool block = request && engine.decide(*request).block;
        times.push_back(
            std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now() - start).count());
        blocked += block ? 1 : 0;
    }
    std::sort(times.begin(), times.end());
    const auto at = [&times](double share) {
        return times[size_t(share * double(times.size() - 1))];
    };
    std::cout
        << "load "
        << std::chrono::duration_cast<std::chrono::milliseconds>(loaded - loadStart).count()
        << "\ncached "
        << std::chrono::duration_cast<std::chrono::milliseconds>(cacheEnd - cacheStart).count()
        << "\nmemory " << (heapAfter - heapBefore) / 1024 << "\nfilters " << engine.counts().network
        << "\nskipped " << engine.counts().skipped << "\nrequests " << times.size() << "\nblocked "
        << blocked << "\nmedian " << at(0.5) << "\np99 " << at(0.99) << '\n';
    return times.empty() ? 1 : 0;
}
