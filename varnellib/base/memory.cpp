#include <varnellib/base/memory.h>
#include <varnellib/base/stopexception.h>

#include <cstdlib>

namespace Varnel {

namespace {
constexpr const char* kSource = "base/memory";
}

void* varnelMalloc(uint64 size, uint64 alignment) {
    if (alignment == 0 || (alignment & (alignment - 1)) != 0)
        VARNEL_STOP(kSource);
    if (size == 0)
        size = 1;
    void* block = nullptr;
    if (alignment <= alignof(std::max_align_t)) {
        block = std::malloc(size);
    } else {
        // aligned_alloc wants the size to be a multiple of the alignment.
        if (size > std::numeric_limits<uint64>::max() - alignment)
            throw std::bad_alloc();
        block = std::aligned_alloc(alignment, (size + alignment - 1) & ~(alignment - 1));
    }
    if (!block)
        throw std::bad_alloc();
    return block;
}

void varnelFree(void* block) {
    std::free(block);
}

} // namespace Varnel
