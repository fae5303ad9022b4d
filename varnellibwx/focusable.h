#pragma once

#include <varnellibwx/export.h>

namespace Varnel::Wx {

/// Marks an owner-drawn control that takes part in keyboard focus movement (moveFocus).
class VARNEL_LIBWX_EXPORT Focusable {
public:
    virtual ~Focusable();
};

} // namespace Varnel::Wx
