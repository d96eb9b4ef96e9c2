#include "platform/runtime/memory.hpp"

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace platform {

void keepFreedMemory() {
#ifdef __GLIBC__
  constexpr int kMebibyte = 1 << 20;
  mallopt(M_MMAP_THRESHOLD, 32 * kMebibyte); // blocks below come from the heap
  mallopt(M_TRIM_THRESHOLD, 64 * kMebibyte); // of its free end so much is kept
#endif
}

} // namespace platform
