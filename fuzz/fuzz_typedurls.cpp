// The typed-address store on any file: recording an address leaves it first
// and once among the entries the list keeps.
#include "FuzzSupport.h"
#include "platform/UserRegistry.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QList<QByteArray> parts = fuzz::split(data, size, 2);
    const QString path = fuzz::scratchFile("registry.ini");
    fuzz::writeFile(path, parts[1]);
    const platform::UserRegistry registry(path);
    const QString address = QString::fromUtf8(parts[0]).trimmed();
    platform::recordTypedUrl(registry, address);
    if (address.isEmpty() || address.contains('\r') || address.contains('\n') ||
        address.contains(QChar(0)) || address.size() > 1023 || address.startsWith(QChar(0xFEFF)) ||
        !fuzz::holds(parts[1], {address}) ||
        (address.size() >= 2 && (address.front() == '"' || address.front() == '\'') &&
         address.back() == address.front()))
        return 0;
    auto url = [&](int n) {
        return registry.readValue(platform::typedUrlsKey, QStringLiteral("url%1").arg(n));
    };
    if (url(1) != address)
        abort();
    for (int n = 2; n <= platform::maxTypedUrls; ++n)
        if (url(n) == address)
            abort();
    return 0;
}
