#include "Tab.h"
#include "platform/browser/BrowserView.h"

Tab::Tab(std::unique_ptr<platform::BrowserView> view) : view_(std::move(view)) {}

Tab::~Tab() = default;

std::unique_ptr<platform::BrowserView> Tab::releaseView()
{
    return std::move(view_);
}
