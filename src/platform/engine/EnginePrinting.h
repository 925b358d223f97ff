#pragma once
// Printing, print preview, page setup and saving of the view's page on the
// engine. One print job at a time per view; the page layout is the window's.
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
    EnginePrinting(QWebEngineView& view, QPageLayout& layout, BrowserView& owner, Dialogs& dialogs);
    ~EnginePrinting() override;
    void print() override;
    void printPreview() override;
    void pageSetup() override;
    void saveAs(const QString& path, SaveFormat format) override;

private:
    bool printable() const;
    std::unique_ptr<QPrinter> newPrinter() const;

    QWebEngineView& view_;
    QPageLayout& layout_;
    BrowserView& owner_;
    Dialogs& dialogs_;
    // The job the engine prints into, which must outlive its asynchronous printing.
    std::unique_ptr<QPrinter> printer_;
    bool previewing_ = false;
};

} // namespace platform
