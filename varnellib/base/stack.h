#pragma once

#include <varnellib/base/arrayview.h>
#include <varnellib/base/memory.h>

#include <algorithm>
#include <initializer_list>
#include <limits>
#include <vector>

namespace Varnel {

/// A growable array with a signed 32-bit count and capacity. When an insertion needs more room
/// than the capacity, the capacity becomes the larger of the needed count and capacity +
/// capacity / 2, and the elements move to the new block; callers rely on this rule to predict
/// allocations. Indexing outside the elements, or popping an empty stack, raises the stop
/// exception.
template <class T, class Allocator = HeapAllocator<T>>
class Stack {
public:
    Stack() = default;
    Stack(std::initializer_list<T> items) : m_items(items) {}
    explicit Stack(ArrayView<const T> items) : m_items(items.begin(), items.end()) {}

    int size() const noexcept { return static_cast<int>(m_items.size()); }
    int capacity() const noexcept { return static_cast<int>(m_items.capacity()); }
    bool isEmpty() const noexcept { return m_items.empty(); }

    void push(const T& item) {
        if (m_items.size() == m_items.capacity()) [[unlikely]]
            return pushGrowing(T(item)); // the item may be one of ours, which growing moves
        m_items.push_back(item);
    }
    void push(T&& item) {
        if (m_items.size() == m_items.capacity()) [[unlikely]]
            return pushGrowing(std::move(item));
        m_items.push_back(std::move(item));
    }
    template <class... Args>
    T& emplace(Args&&... args) {
        growFor(size() + 1);
        return m_items.emplace_back(std::forward<Args>(args)...);
    }
    /// Removes the last element and returns it.
    T pop() {
        VARNEL_REQUIRE(!m_items.empty(), "base/stack");
        T item = std::move(m_items.back());
        m_items.pop_back();
        return item;
    }
    T& top() { return (*this)[size() - 1]; }
    const T& top() const { return (*this)[size() - 1]; }

    void insert(int index, T item) {
        VARNEL_REQUIRE(index >= 0 && index <= size(), "base/stack");
        growFor(size() + 1);
        m_items.insert(m_items.begin() + index, std::move(item));
    }
    void erase(int index) {
        VARNEL_REQUIRE(index >= 0 && index < size(), "base/stack");
        m_items.erase(m_items.begin() + index);
    }
    /// Changes the count; new elements are value-initialised.
    void resize(int count) {
        VARNEL_REQUIRE(count >= 0, "base/stack");
        growFor(count);
        m_items.resize(static_cast<std::size_t>(count));
    }
    void reserve(int count) {
        VARNEL_REQUIRE(count >= 0, "base/stack");
        if (count > capacity())
            m_items.reserve(static_cast<std::size_t>(count));
    }
    void clear() noexcept { m_items.clear(); }

    T& operator[](int index) {
        VARNEL_REQUIRE(index >= 0 && index < size(), "base/stack");
        return m_items[static_cast<std::size_t>(index)];
    }
    const T& operator[](int index) const {
        VARNEL_REQUIRE(index >= 0 && index < size(), "base/stack");
        return m_items[static_cast<std::size_t>(index)];
    }

    T* data() noexcept { return m_items.data(); }
    const T* data() const noexcept { return m_items.data(); }
    T* begin() noexcept { return m_items.data(); }
    T* end() noexcept { return m_items.data() + m_items.size(); }
    const T* begin() const noexcept { return m_items.data(); }
    const T* end() const noexcept { return m_items.data() + m_items.size(); }
    ArrayView<T> view() noexcept { return {data(), size()}; }
    ArrayView<const T> view() const noexcept { return {data(), size()}; }

    friend bool operator==(const Stack& a, const Stack& b) { return a.m_items == b.m_items; }

private:
    // Out of line, so that the common push stays a compare and a store.
    [[gnu::noinline]] void pushGrowing(T&& item) {
        growFor(size() + 1);
        m_items.push_back(std::move(item));
    }

    // The vector never grows by its own rule: every insertion reserves first, and reserve on an
    // empty-enough vector allocates exactly the count asked for.
    void growFor(int needed) {
        const int current = capacity();
        if (needed <= current)
            return;
        VARNEL_REQUIRE(needed > 0, "base/stack");
        const int64 grown = static_cast<int64>(current) + current / 2;
        const int64 target = std::max<int64>(needed, grown);
        m_items.reserve(
            static_cast<std::size_t>(std::min<int64>(target, std::numeric_limits<int32>::max())));
    }

    std::vector<T, Allocator> m_items;
};

} // namespace Varnel
