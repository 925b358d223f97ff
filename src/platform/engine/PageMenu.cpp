#include "PageMenu.h"

#include <QMenu>
#include <QWebEngineContextMenuRequest>
#include <QWebEngineView>

namespace platform {

PageMenu::PageMenu(QWebEngineView& view) : QObject(&view), view_(view)
{
    view_.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&view_, &QWidget::customContextMenuRequested, this, &PageMenu::show);
}

bool PageMenu::takeChosen(const QUrl& requested)
{
    // Whatever the next request is, the choice is spent: a page cannot wait
    // for a later chance to ask for the same address.
    const bool chosen = !chosen_.isEmpty() && requested == chosen_;
    chosen_.clear();
    return chosen;
}

void PageMenu::show(const QPoint& at)
{
    QMenu* menu = view_.createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const QUrl link =
        view_.lastContextMenuRequest() ? view_.lastContextMenuRequest()->linkUrl() : QUrl();
    QWebEnginePage* page = view_.page();
    for (QWebEnginePage::WebAction kind :
         {QWebEnginePage::OpenLinkInNewTab, QWebEnginePage::OpenLinkInNewWindow,
          QWebEnginePage::OpenLinkInNewBackgroundTab}) {
        QAction* engine = page->action(kind);
        if (!menu->actions().contains(engine))
            continue;
        auto* entry = new QAction(engine->icon(), engine->text(), menu);
        connect(entry, &QAction::triggered, this, [this, page, kind, link] {
            chosen_ = link;
            page->triggerAction(kind);
        });
        menu->insertAction(engine, entry);
        menu->removeAction(engine);
    }
    menu->popup(view_.mapToGlobal(at));
}

} // namespace platform
