#include "benchmarks/AllocationPeak.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace pacelet {

namespace {

std::atomic<std::size_t> inUse{0};
std::atomic<std::size_t> peak{0};
std::size_t start = 0;

void* allocate(std::size_t size) noexcept {
    void* const block = std::malloc(size);
    if (block != nullptr) {
        const std::size_t now = inUse += ::malloc_usable_size(block);
        peak = std::max(peak.load(), now);
    }
    return block;
}

void release(void* block) noexcept {
    inUse -= ::malloc_usable_size(block);
    std::free(block);
}

} // namespace

void resetAllocationPeak() {
    start = inUse;
    peak = start;
}

std::size_t allocationPeak() {
    return peak - start;
}

} // namespace pacelet

void* operator new(std::size_t size) {
    if (void* const block = pacelet::allocate(size)) {
        return block;
    }
    throw std::bad_alloc{};
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return pacelet::allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return pacelet::allocate(size);
}

void operator delete(void* block) noexcept {
    pacelet::release(block);
}

void operator delete(void* block, std::size_t) noexcept {
    pacelet::release(block);
}
