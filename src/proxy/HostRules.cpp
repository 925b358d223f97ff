#include "HostRules.h"

namespace proxy {

HostRules HostRules::fromArguments(const QStringList& arguments)
{
    static const QString option = QStringLiteral("--host-resolver-rules=");
    HostRules rules;
    for (const QString& argument : arguments) {
        if (!argument.startsWith(option))
            continue;
        QString value = argument.mid(option.size());
        if (value.startsWith(QLatin1Char('"')) && value.endsWith(QLatin1Char('"')) &&
            value.size() > 1)
            value = value.mid(1, value.size() - 2);
        for (const QString& text : value.split(QLatin1Char(','))) {
            const QStringList words = text.simplified().split(QLatin1Char(' '));
            if (words.size() != 3 || words[0] != QLatin1String("MAP"))
                continue;
            rules.rules_.push_back(
                {QRegularExpression(QRegularExpression::wildcardToRegularExpression(words[1]),
                                    QRegularExpression::CaseInsensitiveOption),
                 words[2]});
        }
    }
    return rules;
}

QStringList HostRules::splitFlags(const QString& flags)
{
    QStringList words;
    QString word;
    bool quoted = false;
    bool inWord = false;
    for (const QChar c : flags) {
        if (c == QLatin1Char('"')) {
            quoted = !quoted;
            inWord = true;
        } else if (c == QLatin1Char(' ') && !quoted) {
            if (inWord)
                words.append(std::exchange(word, {}));
            inWord = false;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (inWord)
        words.append(word);
    return words;
}

QString HostRules::map(const QString& host) const
{
    for (const Rule& rule : rules_)
        if (rule.pattern.match(host).hasMatch())
            return rule.target;
    return host;
}

} // namespace proxy
