#include "support/memory_count.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> allocations = 0;

}  // namespace

void *operator new(std::size_t size) {
  ++allocations;
  if (void *memory = std::malloc(size))
    return memory;
  throw std::bad_alloc();
}

// The sanitizer's own form for arrays does not call the one above.
void *operator new[](std::size_t size) { return operator new(size); }

void *operator new(std::size_t size, const std::nothrow_t & /*never_throws*/) noexcept {
  ++allocations;
  return std::malloc(size);
}

void operator delete(void *memory) noexcept { std::free(memory); }
void operator delete(void *memory, std::size_t /*size*/) noexcept { std::free(memory); }
void operator delete[](void *memory) noexcept { std::free(memory); }
void operator delete[](void *memory, std::size_t /*size*/) noexcept { std::free(memory); }

namespace borvane {

std::size_t Allocations() { return allocations; }

}  // namespace borvane
