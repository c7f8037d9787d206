#include <maya/internal/BlockAllocator.h>

#include <cstdlib>

#if defined(__unix__)
#include <sys/mman.h>
#endif

namespace host {
namespace internal {

void* allocateLargeBlock(std::size_t bytes)
{
#if defined(__unix__)
    void* p = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (p == MAP_FAILED)
        throw std::bad_alloc();
#if defined(MADV_HUGEPAGE)
    madvise(p, bytes, MADV_HUGEPAGE);
#endif
    return p;
#else
    return ::operator new(bytes, std::align_val_t(64));
#endif
}

void releaseLargeBlock(void* block, std::size_t bytes) noexcept
{
    if (!block)
        return;
#if defined(__unix__)
    munmap(block, bytes);
#else
    (void)bytes;
    ::operator delete(block, std::align_val_t(64));
#endif
}

} // namespace internal
} // namespace host
