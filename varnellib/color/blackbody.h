#pragma once

#include <varnellib/color/color.h>
#include <varnellib/export.h>

namespace Varnel {

/// The colour of an ideal black body at `kelvin`, as CIE XYZ scaled to Y = 1. Meaningful from
/// about 500 K up; temperatures below 1 K are treated as 1 K.
VARNEL_LIB_EXPORT XYZ blackbodyColor(float kelvin);

} // namespace Varnel
