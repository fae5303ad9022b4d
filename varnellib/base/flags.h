#pragma once

#include <initializer_list>
#include <type_traits>

namespace Varnel {

/// A set of bits over an enumeration whose members are bit values (2, 4, 8...), passed by value.
/// A raw value from outside (an open mode of 2, say) enters through fromRaw.
template <class E>
requires std::is_enum_v<E>
class Flags {
public:
    using Bits = std::make_unsigned_t<std::underlying_type_t<E>>;

    constexpr Flags() noexcept = default;
    constexpr Flags(E member) noexcept : m_bits(static_cast<Bits>(member)) {}
    constexpr Flags(std::initializer_list<E> members) noexcept {
        for (E member : members)
            m_bits |= static_cast<Bits>(member);
    }
    static constexpr Flags fromRaw(Bits bits) noexcept {
        Flags flags;
        flags.m_bits = bits;
        return flags;
    }

    constexpr Bits raw() const noexcept { return m_bits; }
    constexpr bool isEmpty() const noexcept { return m_bits == 0; }
    /// True when every bit of `member` is set.
    constexpr bool has(E member) const noexcept {
        return (m_bits & static_cast<Bits>(member)) == static_cast<Bits>(member);
    }
    constexpr Flags& set(E member, bool on = true) noexcept {
        if (on)
            m_bits |= static_cast<Bits>(member);
        else
            m_bits &= static_cast<Bits>(~static_cast<Bits>(member));
        return *this;
    }
    constexpr Flags& clear(E member) noexcept { return set(member, false); }

    constexpr Flags operator|(Flags other) const noexcept { return fromRaw(m_bits | other.m_bits); }
    constexpr Flags operator&(Flags other) const noexcept { return fromRaw(m_bits & other.m_bits); }
    constexpr Flags& operator|=(Flags other) noexcept {
        m_bits |= other.m_bits;
        return *this;
    }
    constexpr bool operator==(const Flags&) const noexcept = default;

private:
    Bits m_bits = 0;
};

} // namespace Varnel
