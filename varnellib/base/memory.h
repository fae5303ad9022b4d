#pragma once

#include <varnellib/base/types.h>
#include <varnellib/export.h>

#include <cstddef>
#include <limits>
#include <new>

namespace Varnel {

/// Allocates `size` bytes aligned to `alignment` (a power of two). Never returns null: running out
/// of memory throws std::bad_alloc, a bad alignment raises the stop exception. A size of 0 still
/// gives a distinct block that must be freed.
VARNEL_LIB_EXPORT void* varnelMalloc(uint64 size, uint64 alignment);

/// Frees a block from varnelMalloc; null is allowed.
VARNEL_LIB_EXPORT void varnelFree(void* block);

/// The allocator of every core container: all their memory comes from varnelMalloc, aligned at
/// least as the element type asks (16 bytes for Rgb pixels).
template <class T>
class HeapAllocator {
public:
    using value_type = T;

    HeapAllocator() noexcept = default;
    template <class U>
    HeapAllocator(const HeapAllocator<U>&) noexcept {}

    T* allocate(std::size_t count) {
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T))
            throw std::bad_array_new_length();
        return static_cast<T*>(varnelMalloc(count * sizeof(T), alignof(T)));
    }
    void deallocate(T* block, std::size_t) noexcept { varnelFree(block); }

    template <class U>
    bool operator==(const HeapAllocator<U>&) const noexcept {
        return true;
    }
};

} // namespace Varnel
