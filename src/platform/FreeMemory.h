#pragma once
// Hands the heap's free pages back to the system.

namespace platform {

// Start-up allocates and frees far more than it keeps (the first frames, the
// graphics library's shader compiler); the C library keeps what was freed
// for later unless asked. Does nothing where there is no such request.
void returnFreeMemory();

} // namespace platform
