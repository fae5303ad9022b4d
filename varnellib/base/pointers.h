#pragma once

#include <memory>

namespace Varnel {

/// Shared ownership: callback interfaces that a dialog and its host both hold.
template <class T>
using SharedPtr = std::shared_ptr<T>;

template <class T, class... Args>
SharedPtr<T> makeShared(Args&&... args) {
    return std::make_shared<T>(std::forward<Args>(args)...);
}

template <class T>
using DefaultDeleter = std::default_delete<T>;

/// Sole ownership: controllers handed out by the widgets.
template <class T, class Deleter = DefaultDeleter<T>>
using AutoPtr = std::unique_ptr<T, Deleter>;

template <class T, class... Args>
AutoPtr<T> makeAuto(Args&&... args) {
    return std::make_unique<T>(std::forward<Args>(args)...);
}

} // namespace Varnel
