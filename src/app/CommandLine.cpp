#include "CommandLine.h"

QString commandLineAddress(const QStringList& arguments)
{
    QStringList words;
    for (qsizetype i = 1; i < arguments.size(); ++i)
        if (!arguments[i].startsWith(QLatin1String("--")))
            words.append(arguments[i]);
    return words.join(QLatin1Char(' ')).remove(QLatin1Char('"'));
}

std::optional<QString> commandLineAnswer(const QStringList& arguments, const QString& version)
{
    if (arguments.contains(QLatin1String("--version")))
        return QStringLiteral("qub-browser %1\n").arg(version);
    if (arguments.contains(QLatin1String("--help")))
        return QStringLiteral(
            "Usage: qub-browser [address]\n"
            "Opens the address in a new tab of the running browser, or starts the browser\n"
            "with it in the first tab.\n"
            "  --help     show this and end\n"
            "  --version  show the version and end\n"
            "Other arguments that begin with \"--\" are passed to the web engine.\n");
    return std::nullopt;
}
