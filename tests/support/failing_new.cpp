#include "support/failing_new.hpp"

#include <cstdlib>
#include <limits>
#include <new>

namespace vela::test {
namespace {

constexpr int kNever = std::numeric_limits<int>::max();
thread_local int allocationsLeft = kNever;
thread_local long liveAllocations = 0;
thread_local long allocationsMade = 0;

}  // namespace

FailingNew::FailingNew(int failing) { allocationsLeft = failing; }
FailingNew::~FailingNew() { allocationsLeft = kNever; }
long live_allocations() { return liveAllocations; }
long allocations_made() { return allocationsMade; }

static void* allocate(std::size_t size) {
    ++allocationsMade;
    if (allocationsLeft != kNever && allocationsLeft-- <= 0) {
        allocationsLeft = 0;
        return nullptr;
    }
    void* memory = std::malloc(size == 0 ? 1 : size);
    liveAllocations += memory != nullptr ? 1 : 0;
    return memory;
}

static void release(void* memory) {
    liveAllocations -= memory != nullptr ? 1 : 0;
    std::free(memory);
}

}  // namespace vela::test

void* operator new(std::size_t size) {
    if (void* memory = vela::test::allocate(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return vela::test::allocate(size);
}

void* operator new[](std::size_t size) { return operator new(size); }

void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
    return operator new(size, tag);
}

void operator delete(void* memory) noexcept { vela::test::release(memory); }
void operator delete[](void* memory) noexcept { vela::test::release(memory); }
void operator delete(void* memory, std::size_t) noexcept { vela::test::release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { vela::test::release(memory); }
