#include "FreeMemory.h"

// Any header of the C library says which library it is.
#include <cstdlib>
#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace platform {

void returnFreeMemory()
{
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
}

} // namespace platform
