// "Translist.txt" of any content: no crash, one service per line with a "|",
// and no service address keeps a "{url}" marker once the page's is put in.
#include "FuzzSupport.h"
#include "translate/TranslationList.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString path = fuzz::scratchFile(TranslationList::fileName);
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    fuzz::writeFile(path, bytes);
    const TranslationList list = TranslationList::read(path);
    if (list.lines().size() > size_t(bytes.count('\n')) + 1)
        abort();
    int services = 0;
    for (const TranslationList::Line& line : list.lines())
        services += line.separator ? 0 : 1;
    if (services != list.serviceCount())
        abort();
    for (int n = 1; n <= list.serviceCount(); ++n)
        if (list.serviceAddress(n, QStringLiteral("P"))
                .contains(QLatin1String("{url}"), Qt::CaseInsensitive))
            abort();
    return 0;
}
