#pragma once
// When the program's views have loaded, for the benchmarks that run the
// program itself.
#include "platform/browser/BrowserView.h"

#include <QObject>
#include <functional>
#include <memory>
#include <vector>

namespace bench {

// Calls done() once, when view has finished loading its page.
inline void whenLoaded(platform::BrowserView* view, std::function<void()> done)
{
    auto* watch = new QObject(view);
    QObject::connect(view, &platform::BrowserView::progressChanged, watch,
                     [view, watch, done = std::move(done)](int progress) {
                         if (progress != -1 ||
                             view->readyState() != platform::BrowserView::Complete)
                             return;
                         watch->deleteLater();
                         done();
                     });
}

// Calls done() once every view has loaded.
inline void whenAllLoaded(const std::vector<platform::BrowserView*>& views,
                          std::function<void()> done)
{
    auto pending = std::make_shared<size_t>(views.size());
    for (platform::BrowserView* view : views)
        whenLoaded(view, [pending, done] {
            if (--*pending == 0)
                done();
        });
}

} // namespace bench
