#pragma once

#include <varnellib/base/stopexception.h>
#include <varnellib/base/string.h>

#include <utility>
#include <variant>

namespace Varnel {

/// The error half of an Expected, so that a function can `return Unexpected{String(L"...")}`.
template <class E>
struct Unexpected {
    E error;
};
template <class E>
Unexpected(E) -> Unexpected<E>;

/// A value or an error text. Asking for the half that is not there raises the stop exception.
template <class T, class E = String>
class Expected {
public:
    Expected(const T& value) : m_state(std::in_place_index<0>, value) {}
    Expected(T&& value) : m_state(std::in_place_index<0>, std::move(value)) {}
    template <class U>
    Expected(Unexpected<U> error) : m_state(std::in_place_index<1>, std::move(error.error)) {}

    bool hasValue() const noexcept { return m_state.index() == 0; }
    explicit operator bool() const noexcept { return hasValue(); }

    T& value() & {
        VARNEL_REQUIRE(hasValue(), "base/expected");
        return std::get<0>(m_state);
    }
    const T& value() const& {
        VARNEL_REQUIRE(hasValue(), "base/expected");
        return std::get<0>(m_state);
    }
    const E& error() const {
        VARNEL_REQUIRE(!hasValue(), "base/expected");
        return std::get<1>(m_state);
    }
    T valueOr(T fallback) const { return hasValue() ? std::get<0>(m_state) : std::move(fallback); }

private:
    std::variant<T, E> m_state;
};

} // namespace Varnel
