#pragma once

#include <optional>

namespace Varnel {

/// A value or nothing.
template <class T>
using Optional = std::optional<T>;

} // namespace Varnel
