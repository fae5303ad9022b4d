#pragma once

#include <varnellib/base/types.h>

namespace Varnel::Wx::ColorPickerTypes {

// The colour picker dialog's enumerations; the dialog makes them its own members
// (ColorPicker::Space and so on).

/// Whether the red, green and blue spinners show linear numbers or gamma-encoded ones.
enum class Space : int32 { Linear = 0, Srgb = 1 };

/// The scale of the numbers in the sliders-with-spinners.
enum class Range : int32 { ZeroTo255 = 0, ZeroToOne = 1, Percent = 2 };

/// 1 means the edited colour carries alpha; any other value means RGB only.
enum class ColorFormat : int32 { Rgb = 0, Rgba = 1 };

/// How the picker dialog is shown: as a normal window, or kept above its parent.
enum class DialogType : int32 { Normal = 0, Floating = 1 };

} // namespace Varnel::Wx::ColorPickerTypes
