#pragma once
// The allocator of the host's large arrays; not part of the devkit and not for plug-in use.
//
// Blocks of a few megabytes or more come straight from the system on huge pages where it has
// them: a dense scan's arrays are hundreds of megabytes, filled once and then read at random,
// and on small pages every fresh page costs a fault and every read a likely TLB miss. Smaller
// blocks come from the heap as usual.

#include <cstddef>
#include <new>

namespace host {
namespace internal {

// Bytes from which a block is mapped on its own.
constexpr std::size_t kLargeBlock = std::size_t(4) << 20;

// Throw std::bad_alloc when the system refuses, as operator new does.
void* allocateLargeBlock(std::size_t bytes);
void releaseLargeBlock(void* block, std::size_t bytes) noexcept;

template <typename T>
class BlockAllocator {
public:
    using value_type = T;

    BlockAllocator() noexcept = default;
    template <typename U>
    BlockAllocator(const BlockAllocator<U>&) noexcept
    {
    }

    T* allocate(std::size_t n)
    {
        if (n > static_cast<std::size_t>(-1) / sizeof(T))
            throw std::bad_array_new_length();
        const std::size_t bytes = n * sizeof(T);
        if (bytes >= kLargeBlock)
            return static_cast<T*>(allocateLargeBlock(bytes));
        return static_cast<T*>(::operator new(bytes, std::align_val_t(alignof(T) > 16 ? alignof(T) : 16)));
    }

    void deallocate(T* p, std::size_t n) noexcept
    {
        const std::size_t bytes = n * sizeof(T);
        if (bytes >= kLargeBlock)
            releaseLargeBlock(p, bytes);
        else
            ::operator delete(p, std::align_val_t(alignof(T) > 16 ? alignof(T) : 16));
    }

    template <typename U>
    bool operator==(const BlockAllocator<U>&) const noexcept
    {
        return true;
    }
    template <typename U>
    bool operator!=(const BlockAllocator<U>&) const noexcept
    {
        return false;
    }
};

} // namespace internal
} // namespace host
