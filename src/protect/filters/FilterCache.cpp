#include "FilterCache.h"

#include "Compiled.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace filters {

namespace {

std::string keyOf(const QStringList& lists)
{
    CompiledWriter key;
    for (const QString& list : lists) {
        const QFileInfo info(list);
        key.text(info.absoluteFilePath().toStdString());
        key.text(info.isReadable() ? std::to_string(info.size()) + ' ' +
                                         std::to_string(info.lastModified().toMSecsSinceEpoch())
                                   : std::string("unreadable"));
    }
    return key.bytes();
}

} // namespace

FilterEngine FilterCache::engineFor(const QStringList& lists)
{
    const std::string key = keyOf(lists);
    QFile cached(file_);
    if (cached.open(QIODevice::ReadOnly)) {
        const QByteArray bytes = cached.readAll();
        CompiledReader in(std::string_view(bytes.constData(), size_t(bytes.size())));
        const std::string madeFrom = in.text();
        const size_t header = 4 + madeFrom.size();
        if (in.good() && madeFrom == key) {
            if (auto engine = FilterEngine::fromCompiled(
                    std::string_view(bytes.constData(), size_t(bytes.size())).substr(header))) {
                fromCache_ = true;
                return std::move(*engine);
            }
        }
    }
    fromCache_ = false;
    FilterEngine engine;
    for (const QString& list : lists) {
        QFile file(list);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QByteArray text = file.readAll();
        engine.addList(std::string_view(text.constData(), size_t(text.size())));
    }
    engine.build();
    CompiledWriter header;
    header.text(key);
    QDir().mkpath(QFileInfo(file_).absolutePath());
    QSaveFile out(file_);
    if (out.open(QIODevice::WriteOnly)) {
        const std::string compiled = engine.compiled();
        out.write(header.bytes().data(), qint64(header.bytes().size()));
        out.write(compiled.data(), qint64(compiled.size()));
        out.commit();
    }
    return engine;
}

} // namespace filters
