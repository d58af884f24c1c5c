#include "support/frail_memory.h"

#include <cstdlib>
#include <new>

namespace {

long left = 0;  // requests until the one that fails; 0 for none
bool failed = false;

}  // namespace

FrailMemory::FrailMemory(long number) {
  left = number;
  failed = false;
}
FrailMemory::~FrailMemory() { left = 0; }
bool FrailMemory::HasFailed() { return failed; }

[[gnu::noinline]] void* operator new(std::size_t size) {
  if (left > 0 && --left == 0) {
    failed = true;
    throw std::bad_alloc();
  }
  void* memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
