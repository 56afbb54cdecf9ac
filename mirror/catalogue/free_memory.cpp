#include "catalogue/free_memory.h"

// Any header of the C library says whether it is the one of GNU.
#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace borvane::mirror {

void ReturnFreeMemory() {
#ifdef __GLIBC__
  ::malloc_trim(0);
#endif
}

}  // namespace borvane::mirror
