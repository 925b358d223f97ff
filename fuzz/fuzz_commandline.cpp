// The command line on any arguments: one address with no double quote in it,
// made of no engine switch.
#include "FuzzSupport.h"
#include "app/CommandLine.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QStringList arguments{QStringLiteral("qub-browser")};
    for (const QByteArray& word :
         QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)).split('\0'))
        arguments << QString::fromUtf8(word);
    const QString address = commandLineAddress(arguments);
    if (address.contains('"'))
        abort();
    if (arguments.size() == 2 && arguments[1].startsWith(QLatin1String("--")) && !address.isEmpty())
        abort();
    return 0;
}
