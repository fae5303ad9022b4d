#pragma once

// Images the library carries in its own data. The build turns each file of this folder into a
// byte array (cmake/EmbedFile.cmake); the arrays are declared here.
namespace Varnel::Wx::Resources {

/// The product's application icon (PNG).
extern const unsigned char kVellumIconPng[];
extern const int kVellumIconPngSize;

/// The combo box's arrow, enabled and disabled (12 x 12 pixel PNG), drawn by
/// draw_combo_arrows.py.
extern const unsigned char kComboArrowPng[];
extern const int kComboArrowPngSize;
extern const unsigned char kComboArrowDisabledPng[];
extern const int kComboArrowDisabledPngSize;

/// The spinner's arrows (11 x 9 pixel, 24-bit BMP, 378 bytes each), drawn by
/// draw_spinner_arrows.py.
extern const unsigned char kSpinnerUpNormalBmp[];
extern const unsigned char kSpinnerUpHoverBmp[];
extern const unsigned char kSpinnerUpPressedBmp[];
extern const unsigned char kSpinnerDownNormalBmp[];
extern const unsigned char kSpinnerDownHoverBmp[];
extern const unsigned char kSpinnerDownPressedBmp[];

/// The eyedropper buttons' faces, "Pick Color" and "Pick Inverse" (20 x 20 pixel PNG, and
/// 40 x 40 for double scale), drawn by draw_eyedropper_icons.py.
extern const unsigned char kEyeDropperColorPng[];
extern const int kEyeDropperColorPngSize;
extern const unsigned char kEyeDropperColor2xPng[];
extern const int kEyeDropperColor2xPngSize;
extern const unsigned char kEyeDropperInversePng[];
extern const int kEyeDropperInversePngSize;
extern const unsigned char kEyeDropperInverse2xPng[];
extern const int kEyeDropperInverse2xPngSize;

} // namespace Varnel::Wx::Resources
