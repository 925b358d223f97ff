#include "PopupVerdict.h"

namespace {

bool holds(const QString& text, const QString& part)
{
    return text.contains(part);
}

bool pointTest(const PopupFacts& f)
{
    if (!f.buttonWentDown || !f.elementAtPoint)
        return false;
    if (f.pointValue == f.activeValue)
        // A click on the bare page body asks for nothing.
        return f.activeTag != QLatin1String("BODY");
    // The lower-case "body" is compared as it always was: tag names come in
    // capitals, so a focused body with an address counts.
    return holds(f.pointValue, QStringLiteral("://")) ||
           (holds(f.activeValue, QStringLiteral("://")) && f.activeTag != QLatin1String("body")) ||
           holds(f.pointValue.toUpper(), QStringLiteral("JAVASCRIPT")) ||
           holds(f.activeValue.toUpper(), QStringLiteral("JAVASCRIPT"));
}

// A click less than half a second ago, measured from the whole second kept.
bool clickTest(const PopupFacts& f)
{
    if (!(f.now < f.lastClickTime + 0.5))
        return false;
    if (f.activeTag == QLatin1String("A"))
        return true;
    if (f.activeTag == QLatin1String("INPUT")) {
        const QString type = f.activeInputType.toUpper();
        return holds(type, QStringLiteral("SUBMIT")) || holds(type, QStringLiteral("IMAGE"));
    }
    if (f.activeTag == QLatin1String("FRAME"))
        return f.frameHasActiveElement;
    return false;
}

} // namespace

bool userAskedForWindow(const PopupFacts& f)
{
    if (!f.stopPopups || !f.fromCurrentTab || !f.hasAddress)
        return false;
    if (f.chosenFromPageMenu)
        return true;
    if (!f.userActivated || f.activeTag.isEmpty())
        return false;
    // The click-time test runs whatever the point test found, and only adds.
    const bool byPoint = pointTest(f);
    return clickTest(f) || byPoint;
}

bool windowAllowed(const PopupFacts& f)
{
    return !f.stopPopups || userAskedForWindow(f);
}
