#pragma once

#include <varnellib/base/stopexception.h>

#include <type_traits>

namespace Varnel {

/// A pointer and a count, not owning: a window onto elements that someone else keeps alive (for
/// example the colours of a static line). Indexing outside it raises the stop exception.
template <class T>
class ArrayView {
public:
    constexpr ArrayView() noexcept = default;
    constexpr ArrayView(T* data, int count) : m_data(data), m_count(count) {
        VARNEL_REQUIRE(count >= 0 && (data || count == 0), "base/arrayview");
    }
    template <int N>
    constexpr ArrayView(T (&items)[N]) noexcept : m_data(items), m_count(N) {}
    /// Views any contiguous container with data() and size() (Array, Stack, std::vector).
    template <class Container>
    requires requires(Container& c) {
        { c.data() } -> std::convertible_to<T*>;
        c.size();
    }
    constexpr ArrayView(Container& items) noexcept
        : m_data(items.data()), m_count(static_cast<int>(items.size())) {}
    /// A view of mutable elements is also a view of const ones.
    template <class U>
    requires(std::is_same_v<const U, T> &&
             !std::is_const_v<U>) constexpr ArrayView(ArrayView<U> other) noexcept
        : m_data(other.data()), m_count(other.size()) {}
    /// A view of a braced list lives only as long as the full expression.
    constexpr ArrayView(
        std::initializer_list<std::remove_const_t<T>> items) noexcept requires std::is_const_v<T>
        : m_data(items.begin()), m_count(static_cast<int>(items.size())) {}

    constexpr T* data() const noexcept { return m_data; }
    constexpr int size() const noexcept { return m_count; }
    constexpr bool isEmpty() const noexcept { return m_count == 0; }
    constexpr T* begin() const noexcept { return m_data; }
    constexpr T* end() const noexcept { return m_data + m_count; }
    constexpr T& operator[](int index) const {
        VARNEL_REQUIRE(index >= 0 && index < m_count, "base/arrayview");
        return m_data[index];
    }

private:
    T* m_data = nullptr;
    int m_count = 0;
};

} // namespace Varnel
