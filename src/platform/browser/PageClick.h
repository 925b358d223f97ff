#pragma once
// What the page agent reports of one mouse-down or click in a page, from any
// frame, as the page saw it. Records reach the program before a new-window
// request that the same click causes (see docs/page-agent.md).
#include <QPoint>
#include <QString>
#include <QVariantMap>

namespace platform {

struct PageClick
{
    enum class Kind { MouseDown, Click };

    Kind kind = Kind::Click;
    // The page's clock, milliseconds since the epoch.
    double pageTime = 0;
    QPoint screenPoint;
    // In the coordinates of the frame's document.
    QPoint pagePoint;
    // Upper-case tag of the element under the pointer.
    QString tag;
    // Address of the link (or the source of the element) under the pointer.
    QString href;
    // Type of an INPUT element under the pointer.
    QString inputType;
    // The document's focused element: tag and link address.
    QString focusedTag;
    QString focusedHref;
    // True only for a click the user made in the top frame: false for a click
    // made by a script, and for every click relayed from a subframe.
    bool trusted = false;
    bool inSubframe = false;
};

// A record as the page agent sends it. Whatever the page made of it, the
// result is a click; a record relayed from a subframe is never trusted.
PageClick pageClickFromRecord(const QVariantMap& record);

} // namespace platform
