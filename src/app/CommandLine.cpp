#include "CommandLine.h"

QString commandLineAddress(const QStringList& arguments)
{
    QStringList words;
    for (qsizetype i = 1; i < arguments.size(); ++i)
        if (!arguments[i].startsWith(QLatin1String("--")))
            words.append(arguments[i]);
    return words.join(QLatin1Char(' ')).remove(QLatin1Char('"'));
}
