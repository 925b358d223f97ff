#include "PageClick.h"

namespace platform {

PageClick pageClickFromRecord(const QVariantMap& record)
{
    auto text = [&](const char* name) { return record.value(QLatin1String(name)).toString(); };
    auto number = [&](const char* name) { return record.value(QLatin1String(name)).toInt(); };
    PageClick click;
    click.kind = text("kind") == QLatin1String("mousedown") ? PageClick::Kind::MouseDown
                                                            : PageClick::Kind::Click;
    click.pageTime = record.value(QStringLiteral("time")).toDouble();
    click.screenPoint = QPoint(number("screenX"), number("screenY"));
    click.pagePoint = QPoint(number("pageX"), number("pageY"));
    click.tag = text("tag");
    click.href = text("href");
    click.inputType = text("inputType");
    click.focusedTag = text("focusedTag");
    click.focusedHref = text("focusedHref");
    click.inSubframe = record.value(QStringLiteral("subframe")).toBool();
    // A relayed record is only as good as the relay: a page that stripped the
    // top frame's listeners (document.open) could forge one. Only the top
    // frame's own records are taken as the user's.
    click.trusted = record.value(QStringLiteral("trusted")).toBool() && !click.inSubframe;
    return click;
}

} // namespace platform
