#pragma once
// One view of the strip, owned here, and what the program's parts keep of it.
// Each part attaches data of a type of its own, made on first use and gone
// with the tab, so no part keeps a map of tabs that could outlive one.
#include <map>
#include <memory>
#include <typeindex>

namespace platform {
class BrowserView;
} // namespace platform

class Tab
{
public:
    explicit Tab(std::unique_ptr<platform::BrowserView> view);
    ~Tab();
    Tab(const Tab&) = delete;
    Tab& operator=(const Tab&) = delete;

    platform::BrowserView& view() const { return *view_; }
    // Hands the view to whoever ends it; the tab is left without one.
    std::unique_ptr<platform::BrowserView> releaseView();

    template <class Data> Data& data()
    {
        std::unique_ptr<Slot>& slot = data_[std::type_index(typeid(Data))];
        if (!slot)
            slot = std::make_unique<Holder<Data>>();
        return static_cast<Holder<Data>&>(*slot).value;
    }

private:
    struct Slot
    {
        virtual ~Slot() = default;
    };
    template <class Data> struct Holder final : Slot
    {
        Data value{};
    };

    std::unique_ptr<platform::BrowserView> view_;
    std::map<std::type_index, std::unique_ptr<Slot>> data_;
};
