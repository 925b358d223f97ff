#include "EnginePrinting.h"
#include "platform/Dialogs.h"
#include "platform/browser/BrowserView.h"

#include <QEventLoop>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QWebEngineDownloadRequest>
#include <QWebEnginePage>
#include <QWebEngineView>

namespace platform {

EnginePrinting::EnginePrinting(QPageLayout& layout, BrowserView& owner, Dialogs& dialogs)
    : QObject(&owner), layout_(layout), owner_(owner), dialogs_(dialogs)
{
}

void EnginePrinting::attach(QWebEngineView& view)
{
    view_ = &view;
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

bool EnginePrinting::printable() const
{
    // A page whose process is gone has nothing to print, and the engine's
    // printing of it goes wrong on its own thread.
    return !busy() && view_->page()->renderProcessPid() > 0;
}

void EnginePrinting::print()
{
    if (!printable())
        return;
    printer_ = newPrinter();
    // Not modal to the page's code, so the view may close meanwhile.
    auto* dialog = new QPrintDialog(printer_.get(), view_);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this] { view_->print(printer_.get()); });
    connect(dialog, &QDialog::rejected, this, [this] { printer_.reset(); });
    dialog->open();
}

void EnginePrinting::printPreview()
{
    if (!printable())
        return;
    previewing_ = true;
    const std::unique_ptr<QPrinter> printer = newPrinter();
    QPrintPreviewDialog preview(printer.get(), view_);
    // The preview paints synchronously; the engine prints asynchronously, or
    // at once when it refuses: queued, the end reaches the loop either way.
    connect(&preview, &QPrintPreviewDialog::paintRequested, this, [this](QPrinter* target) {
        QEventLoop loop;
        connect(view_, &QWebEngineView::printFinished, &loop, &QEventLoop::quit,
                Qt::QueuedConnection);
        view_->print(target);
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
    // Qt's page setup works on real printers only; printing to a file has
    // its own paper settings in the print dialog.
    if (printer->outputFormat() != QPrinter::NativeFormat) {
        dialogs_.message(QStringLiteral("No printer is set up on this desktop, so there is no "
                                        "paper to set up. Print can still save the page as a "
                                        "PDF file, with paper settings of its own."),
                         Dialogs::Buttons::Ok, Dialogs::Icon::Information);
        return;
    }
    QPageSetupDialog dialog(printer.get(), view_);
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
    view_->page()->save(path, engineFormat);
}

} // namespace platform
