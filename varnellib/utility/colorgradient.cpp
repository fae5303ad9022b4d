#include <varnellib/utility/colorgradient.h>

#include <algorithm>
#include <cmath>

namespace Varnel {

namespace {
bool before(float position, const ColorGradient::Point& point) {
    return position < point.position;
}
} // namespace

int ColorGradient::addPoint(const Rgb& color, float position) {
    const Point* at = std::upper_bound(m_points.begin(), m_points.end(), position, before);
    const int index = static_cast<int>(at - m_points.begin());
    m_points.insert(index, Point{color, position});
    return index;
}

void ColorGradient::removePoint(int index) {
    m_points.erase(index);
}

void ColorGradient::setColor(int index, const Rgb& color) {
    m_points[index].color = color;
}

int ColorGradient::setPosition(int index, float position) {
    const Rgb color = m_points[index].color;
    m_points.erase(index);
    return addPoint(color, position);
}

Rgb ColorGradient::getColorAt(float position) const {
    const int count = m_points.size();
    if (count == 0)
        return kEmptyColor;
    const Point* p = m_points.data();
    if (std::isnan(position) || !(position > p[0].position))
        return p[0].color;
    if (!(position < p[count - 1].position))
        return p[count - 1].color;
    const Point* upper = std::upper_bound(p, p + count, position, before);
    const Point& a = upper[-1];
    const Point& b = upper[0];
    const float t = (position - a.position) / (b.position - a.position);
    return a.color + (b.color - a.color) * t;
}

} // namespace Varnel
