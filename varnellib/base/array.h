#pragma once

#include <varnellib/base/arrayview.h>
#include <varnellib/base/memory.h>

#include <initializer_list>
#include <vector>

namespace Varnel {

/// An owning run of elements with a count fixed at construction, passed by value (for example
/// the item identifiers of a dropdown). Indexing outside it raises the stop exception.
template <class T, class Allocator = HeapAllocator<T>>
class Array {
public:
    Array() = default;
    explicit Array(int count) : m_items(checkedCount(count)) {}
    Array(int count, const T& value) : m_items(checkedCount(count), value) {}
    Array(std::initializer_list<T> items) : m_items(items) {}
    explicit Array(ArrayView<const T> items) : m_items(items.begin(), items.end()) {}

    int size() const noexcept { return static_cast<int>(m_items.size()); }
    bool isEmpty() const noexcept { return m_items.empty(); }
    T* data() noexcept { return m_items.data(); }
    const T* data() const noexcept { return m_items.data(); }
    T* begin() noexcept { return m_items.data(); }
    T* end() noexcept { return m_items.data() + m_items.size(); }
    const T* begin() const noexcept { return m_items.data(); }
    const T* end() const noexcept { return m_items.data() + m_items.size(); }

    T& operator[](int index) {
        VARNEL_REQUIRE(index >= 0 && index < size(), "base/array");
        return m_items[static_cast<std::size_t>(index)];
    }
    const T& operator[](int index) const {
        VARNEL_REQUIRE(index >= 0 && index < size(), "base/array");
        return m_items[static_cast<std::size_t>(index)];
    }

    ArrayView<T> view() noexcept { return {data(), size()}; }
    ArrayView<const T> view() const noexcept { return {data(), size()}; }

    friend bool operator==(const Array& a, const Array& b) { return a.m_items == b.m_items; }

private:
    static std::size_t checkedCount(int count) {
        VARNEL_REQUIRE(count >= 0, "base/array");
        return static_cast<std::size_t>(count);
    }

    std::vector<T, Allocator> m_items;
};

} // namespace Varnel
