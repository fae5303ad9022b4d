#pragma once

#include <varnellib/base/memory.h>
#include <varnellib/base/stopexception.h>

#include <vector>

namespace Varnel {

/// A width-by-height array of pixels stored row by row, row 0 on top. The pixel block comes from
/// varnelMalloc with the pixel type's alignment (16 bytes for Rgb). Positions outside the bitmap
/// raise the stop exception.
template <class Pixel>
class BitmapImpl {
public:
    BitmapImpl() = default;
    BitmapImpl(int width, int height, const Pixel& fill = Pixel())
        : m_width(width), m_height(height), m_pixels(checkedArea(width, height), fill) {}

    int width() const noexcept { return m_width; }
    int height() const noexcept { return m_height; }
    bool isEmpty() const noexcept { return m_pixels.empty(); }

    Pixel& operator()(int x, int y) { return m_pixels[offset(x, y)]; }
    const Pixel& operator()(int x, int y) const { return m_pixels[offset(x, y)]; }

    Pixel* data() noexcept { return m_pixels.data(); }
    const Pixel* data() const noexcept { return m_pixels.data(); }
    Pixel* row(int y) { return m_pixels.data() + offset(0, y); }
    const Pixel* row(int y) const { return m_pixels.data() + offset(0, y); }

    bool operator==(const BitmapImpl&) const = default;

private:
    static std::size_t checkedArea(int width, int height) {
        VARNEL_REQUIRE(width >= 0 && height >= 0, "image/bitmap");
        return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    }
    std::size_t offset(int x, int y) const {
        VARNEL_REQUIRE(x >= 0 && x < m_width && y >= 0 && y < m_height, "image/bitmap");
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) +
               static_cast<std::size_t>(x);
    }

    int m_width = 0;
    int m_height = 0;
    std::vector<Pixel, HeapAllocator<Pixel>> m_pixels;
};

} // namespace Varnel
