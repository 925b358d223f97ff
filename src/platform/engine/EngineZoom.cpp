#include "EngineZoom.h"

#include <QWebEnginePage>
#include <array>
#include <cmath>

namespace platform {

static constexpr std::array<double, ZoomFacet::levelCount> factors = {0.8, 0.9, 1.0, 1.2, 1.5};

int EngineZoom::level() const
{
    const double factor = page_.zoomFactor();
    for (int level = 0; level < levelCount; ++level)
        if (std::abs(factors[level] - factor) < 0.001)
            return level;
    return -1;
}

void EngineZoom::setLevel(int level)
{
    if (level >= 0 && level < levelCount)
        page_.setZoomFactor(factors[level]);
}

} // namespace platform
