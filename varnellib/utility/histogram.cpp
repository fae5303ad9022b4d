#include <varnellib/base/stopexception.h>
#include <varnellib/utility/histogram.h>

#include <algorithm>

namespace Varnel {

Histogram::Histogram(Stack<uint64> bins) : m_bins(std::move(bins)) {
    for (uint64 count : m_bins)
        m_maxCount = std::max(m_maxCount, count);
}

Stack<float> Histogram::getCumulativeHistogram() const {
    Stack<float> sums;
    sums.reserve(m_bins.size());
    long double total = 0;
    for (uint64 count : m_bins)
        total += static_cast<long double>(count);
    long double running = 0;
    for (uint64 count : m_bins) {
        running += static_cast<long double>(count);
        sums.push(total > 0 ? static_cast<float>(running / total) : 0.f);
    }
    return sums;
}

Curve Histogram::computeEqualizingCurve(int points) const {
    VARNEL_REQUIRE(points >= 2, "utility/histogram");
    const Stack<float> cumulative = getCumulativeHistogram();
    if (cumulative.isEmpty() || cumulative.top() <= 0.f)
        return Curve();
    const int bins = cumulative.size();
    Curve curve;
    curve.points().clear();
    for (int i = 0; i < points; ++i) {
        const float x = static_cast<float>(i) / static_cast<float>(points - 1);
        // The share below x, interpolated linearly inside the bin that x falls in.
        const float position = x * static_cast<float>(bins);
        const int bin = std::min(static_cast<int>(position), bins - 1);
        const float below = bin > 0 ? cumulative[bin - 1] : 0.f;
        const float within = std::min(position - static_cast<float>(bin), 1.f);
        curve.points().push({x, below + (cumulative[bin] - below) * within});
    }
    return curve;
}

} // namespace Varnel
