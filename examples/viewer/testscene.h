#pragma once

#include <varnellib/image/image.h>

namespace Viewer {

/// A small physically based test scene, rendered when the viewer starts without an image: three
/// spheres (a red diffuse one, a mirror-like metal one and a white one) on a grey ground under a
/// blue sky with a sun, in linear light: the sky is about 1, lit surfaces up to about 4, the sun's
/// disk thousands. Deterministic; `width` x `height` pixels.
Varnel::Image renderTestScene(int width, int height);

} // namespace Viewer
