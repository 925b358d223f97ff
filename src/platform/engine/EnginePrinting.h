#pragma once
// Printing, print preview, page setup and saving of the view's page on the
// engine. One print job at a time per view; the page layout is the window's.
// The widget that draws the page may be made anew (a discarded page gets a
// new one); printing follows whichever is attached.
#include "platform/browser/ViewFacets.h"

#include <QObject>
#include <memory>

class QPageLayout;
class QPrinter;
class QWebEngineView;

namespace platform {

class Dialogs;

class BrowserView;

class EnginePrinting : public QObject, public PrintingFacet
{
    Q_OBJECT
public:
    EnginePrinting(QPageLayout& layout, BrowserView& owner, Dialogs& dialogs);
    ~EnginePrinting() override;
    // Prints what this view draws from now on.
    void attach(QWebEngineView& view);
    // A print job or preview is under way.
    bool busy() const { return printer_ || previewing_; }
    void print() override;
    void printPreview() override;
    void pageSetup() override;
    void saveAs(const QString& path, SaveFormat format) override;

private:
    bool printable() const;
    std::unique_ptr<QPrinter> newPrinter() const;

    QWebEngineView* view_ = nullptr;
    QPageLayout& layout_;
    BrowserView& owner_;
    Dialogs& dialogs_;
    // The job the engine prints into, which must outlive its asynchronous printing.
    std::unique_ptr<QPrinter> printer_;
    bool previewing_ = false;
};

} // namespace platform
