#include "allocations.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

long allocations = 0;

}  // namespace

long Allocations() { return allocations; }

[[gnu::noinline]] void* operator new(std::size_t size) {
  ++allocations;
  void* memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
