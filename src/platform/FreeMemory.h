#pragma once
// The system's memory: the heap's free pages handed back, and whether little
// is left.

namespace platform {

// Start-up allocates and frees far more than it keeps (the first frames, the
// graphics library's shader compiler); the C library keeps what was freed
// for later unless asked. Does nothing where there is no such request.
void returnFreeMemory();

// Whether less than a tenth of the system's memory is available to programs
// without swapping. False where the system does not tell.
bool systemMemoryLow();

} // namespace platform
