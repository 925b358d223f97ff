#include "AddressToolWidth.h"

#include <algorithm>

int addressToolWidth(bool sharesLineWithMainBar, int windowWidth, int addressBandLeft)
{
    if (sharesLineWithMainBar) {
        const int width = windowWidth - 11430;
        return width < 0 ? 3000 : width;
    }
    return std::max(0, windowWidth - addressBandLeft - 3200);
}
