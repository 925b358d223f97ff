#pragma once
// The style sheet that hides a page's unwanted elements: put into every
// document of the page, frames included, as the document is made, before
// the page's own scripts run, from a world of the program's own that the
// page's scripts cannot reach. A document whose frame the engine had made
// before the sheet changed can keep the old one; mend() gives the page's
// document the latest once it has loaded.
#include <QString>

class QWebEnginePage;

namespace platform {

class HidingStyle
{
public:
    explicit HidingStyle(QWebEnginePage& page) : page_(page) {}

    // For the documents the page makes from now on; empty hides nothing.
    void set(const QString& style);
    void mend();

private:
    QWebEnginePage& page_;
    QString style_;
    // Which sheet a document holds, so mending sends the sheet only when it
    // is not the latest.
    int version_ = 0;
};

} // namespace platform
