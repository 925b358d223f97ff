#include "SecurityCaption.h"

QString securityCaption(const QString& labels, int state)
{
    // Positions from 1, as the cuts are stated; 0 when there is no "|".
    const qsizetype p1 = labels.indexOf(QLatin1Char('|')) + 1;
    const qsizetype p2 = p1 > 0 ? labels.indexOf(QLatin1Char('|'), p1) + 1 : 0;
    switch (state) {
    case 0:
        return labels.left(std::max(p1 - 1, qsizetype(0)));
    case 1:
        return labels.mid(p1, p1);
    case 2:
        return labels.mid(p2, std::max(labels.size() - p2 - 1, qsizetype(0)));
    case 3:
        return QStringLiteral("40-bit");
    case 4:
        return QStringLiteral("56-bit");
    case 5:
        return QStringLiteral("Fortezza");
    case 6:
        return QStringLiteral("128-bit");
    default:
        return {};
    }
}
