#pragma once

#include <functional>
#include <memory>
#include <type_traits>

namespace Varnel {

namespace Detail {

/// The reference-counted block behind a Function: every copy of a Function points at the same
/// one, so a stateful callable (a lambda counting calls, say) keeps one state for all copies.
template <class Signature>
struct WrapperFunction {
    std::function<Signature> callable;
};

} // namespace Detail

template <class Signature>
class Function;

/// The callback type of the library (click handlers, value-changed notifications). Copies share
/// one callable. An empty Function may be called: it does nothing and, for a non-void result,
/// returns a value-initialised R.
template <class R, class... Args>
class Function<R(Args...)> {
public:
    Function() noexcept = default;
    Function(std::nullptr_t) noexcept {}

    template <class Callable>
    requires(!std::is_same_v<std::remove_cvref_t<Callable>, Function> &&
             std::is_invocable_r_v<R, std::decay_t<Callable>&, Args...>)
        Function(Callable&& callable)
        : m_wrapper(std::make_shared<Detail::WrapperFunction<R(Args...)>>(
              Detail::WrapperFunction<R(Args...)>{std::forward<Callable>(callable)})) {
        if (!m_wrapper->callable)
            m_wrapper.reset(); // an empty std::function or a null function pointer
    }

    explicit operator bool() const noexcept { return m_wrapper != nullptr; }

    R operator()(Args... args) const {
        if (!m_wrapper) {
            if constexpr (std::is_void_v<R>)
                return;
            else
                return R();
        }
        return m_wrapper->callable(std::forward<Args>(args)...);
    }

    /// True when both are empty or both are copies of the same Function.
    friend bool operator==(const Function& a, const Function& b) noexcept {
        return a.m_wrapper == b.m_wrapper;
    }

private:
    std::shared_ptr<Detail::WrapperFunction<R(Args...)>> m_wrapper;
};

} // namespace Varnel
