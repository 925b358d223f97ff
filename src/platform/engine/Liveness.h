#pragma once
// Answers from a page's process arrive later, possibly after its view was
// retired or deleted. A view's liveness turns false at that moment, and the
// answers wrapped with it are dropped from then on.
#include <memory>

namespace platform {

using Liveness = std::shared_ptr<const bool>;

template <typename Answer> auto whileAlive(const Liveness& alive, Answer answer)
{
    return [alive, answer = std::move(answer)](const auto&... values) {
        if (*alive)
            answer(values...);
    };
}

} // namespace platform
