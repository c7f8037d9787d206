#pragma once
// Storage shared by the M*Array classes; not part of the devkit and not for plug-in use.
//
// Out-of-range element access asserts in debug builds. In release builds it hands out a
// per-thread dummy element reset to a default value, so a bad index never reads or writes
// outside the array. Mutators taking a bad index fail with kInvalidParameter instead, and a
// length that cannot be allocated fails with kInsufficientMemory.

#include <maya/MStatus.h>
#include <maya/internal/BlockAllocator.h>

#include <cassert>
#include <exception>
#include <vector>

namespace host {
namespace internal {

template <typename T>
class HostArray
{
public:
    HostArray() = default;
    // An allocation failure leaves the array empty rather than throwing out of the API.
    HostArray(unsigned int count, const T& value)
    {
        try {
            fItems.assign(count, value);
        } catch (const std::exception&) {
            fItems.clear();
        }
    }
    template <typename Source, typename Convert>
    HostArray(const Source* source, unsigned int count, Convert convert)
    {
        if (source == nullptr)
            return;
        fItems.reserve(count);
        for (unsigned int i = 0; i < count; ++i)
            fItems.push_back(convert(source[i]));
    }

    unsigned int length() const { return static_cast<unsigned int>(fItems.size()); }

    T& at(unsigned int index)
    {
        if (index < fItems.size())
            return fItems[index];
        assert(!"array index out of range");
        return dummy();
    }

    const T& at(unsigned int index) const
    {
        if (index < fItems.size())
            return fItems[index];
        assert(!"array index out of range");
        return dummy();
    }

    MStatus set(const T& value, unsigned int index)
    {
        if (index >= fItems.size())
            return MStatus::kInvalidParameter;
        fItems[index] = value;
        return MStatus::kSuccess;
    }

    MStatus setLength(unsigned int count)
    {
        try {
            fItems.resize(count);
        } catch (const std::exception&) {
            return MStatus::kInsufficientMemory;
        }
        return MStatus::kSuccess;
    }

    MStatus remove(unsigned int index)
    {
        if (index >= fItems.size())
            return MStatus::kInvalidParameter;
        fItems.erase(fItems.begin() + index);
        return MStatus::kSuccess;
    }

    // index == length() appends.
    MStatus insert(const T& value, unsigned int index)
    {
        if (index > fItems.size())
            return MStatus::kInvalidParameter;
        fItems.insert(fItems.begin() + index, value);
        return MStatus::kSuccess;
    }

    MStatus append(const T& value)
    {
        fItems.push_back(value);
        return MStatus::kSuccess;
    }

    MStatus clear()
    {
        fItems.clear();
        return MStatus::kSuccess;
    }

    template <typename Dest, typename Convert>
    MStatus get(Dest* dest, Convert convert) const
    {
        if (dest == nullptr)
            return MStatus::kInvalidParameter;
        for (std::size_t i = 0; i < fItems.size(); ++i)
            convert(fItems[i], dest[i]);
        return MStatus::kSuccess;
    }

    // Kept only so sizeIncrement() can report what was set; growth is std::vector's.
    void setSizeIncrement(unsigned int increment) { fSizeIncrement = increment == 0 ? 1 : increment; }
    unsigned int sizeIncrement() const { return fSizeIncrement; }

    T* begin() { return fItems.data(); }
    T* end() { return fItems.data() + fItems.size(); }
    const T* begin() const { return fItems.data(); }
    const T* end() const { return fItems.data() + fItems.size(); }

private:
    static T& dummy()
    {
        thread_local T value;
        value = T();
        return value;
    }

    std::vector<T, BlockAllocator<T>> fItems;
    unsigned int fSizeIncrement = 16;
};

} // namespace internal
} // namespace host
