#pragma once

// Images the library carries in its own data. The build turns each file of this folder into a
// byte array (cmake/EmbedFile.cmake); the arrays are declared here.
namespace Varnel::Wx::Resources {

/// The product's application icon (PNG).
extern const unsigned char kVellumIconPng[];
extern const int kVellumIconPngSize;

} // namespace Varnel::Wx::Resources
