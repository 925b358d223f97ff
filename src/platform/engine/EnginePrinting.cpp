#include "EnginePrinting.h"
#include "platform/browser/BrowserView.h"

#include <QEventLoop>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QWebEngineDownloadRequest>
#include <QWebEngineView>

namespace platform {

EnginePrinting::EnginePrinting(QWebEngineView& view, QPageLayout& layout, BrowserView& owner)
    : QObject(&view), view_(view), layout_(layout), owner_(owner)
{
    // A page's window.print() asks as the menu's print does.
    connect(&view, &QWebEngineView::printRequested, this, &EnginePrinting::print);
    connect(&view, &QWebEngineView::printFinished, this, [this] {
        if (!previewing_)
            printer_.reset();
    });
}

EnginePrinting::~EnginePrinting() = default;

std::unique_ptr<QPrinter> EnginePrinting::newPrinter() const
{
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setPageLayout(layout_);
    return printer;
}

void EnginePrinting::print()
{
    if (printer_ || previewing_)
        return;
    printer_ = newPrinter();
    // Not modal to the page's code, so the view may close meanwhile.
    auto* dialog = new QPrintDialog(printer_.get(), &view_);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this] { view_.print(printer_.get()); });
    connect(dialog, &QDialog::rejected, this, [this] { printer_.reset(); });
    dialog->open();
}

void EnginePrinting::printPreview()
{
    if (printer_ || previewing_)
        return;
    previewing_ = true;
    const std::unique_ptr<QPrinter> printer = newPrinter();
    QPrintPreviewDialog preview(printer.get(), &view_);
    // The preview paints synchronously; the engine prints asynchronously.
    connect(&preview, &QPrintPreviewDialog::paintRequested, this, [this](QPrinter* target) {
        QEventLoop loop;
        connect(&view_, &QWebEngineView::printFinished, &loop, &QEventLoop::quit);
        view_.print(target);
        loop.exec();
    });
    {
        BrowserView::Prompt waiting(owner_);
        preview.exec();
    }
    previewing_ = false;
}

void EnginePrinting::pageSetup()
{
    const std::unique_ptr<QPrinter> printer = newPrinter();
    QPageSetupDialog dialog(printer.get(), &view_);
    BrowserView::Prompt waiting(owner_);
    if (dialog.exec() == QDialog::Accepted)
        layout_ = printer->pageLayout();
}

void EnginePrinting::saveAs(const QString& path, SaveFormat format)
{
    const auto engineFormat =
        format == SaveFormat::SingleHtml   ? QWebEngineDownloadRequest::SingleHtmlSaveFormat
        : format == SaveFormat::WebArchive ? QWebEngineDownloadRequest::MimeHtmlSaveFormat
                                           : QWebEngineDownloadRequest::CompleteHtmlSaveFormat;
    view_.page()->save(path, engineFormat);
}

} // namespace platform
