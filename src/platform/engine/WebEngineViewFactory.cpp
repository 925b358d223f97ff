#include "WebEngineViewFactory.h"
#include "WebEngineBrowserView.h"

namespace platform {

BrowserView* WebEngineViewFactory::create(int index)
{
    return new WebEngineBrowserView(index, engine_);
}

} // namespace platform
