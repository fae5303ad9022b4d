#pragma once

#include <varnellib/base/stack.h>
#include <varnellib/export.h>
#include <varnellib/utility/curve.h>

namespace Varnel {

/// The histogram of an image's values over 0..1: one count per bin (bin i covers
/// [i / n, (i + 1) / n)) and the largest count.
class VARNEL_LIB_EXPORT Histogram {
public:
    Histogram() = default;
    explicit Histogram(Stack<uint64> bins);

    const Stack<uint64>& bins() const noexcept { return m_bins; }
    uint64 maxCount() const noexcept { return m_maxCount; }

    /// Running sums of the bins divided by the total, so the last is 1; all zeros when every bin
    /// is empty, and an empty list for no bins.
    Stack<float> getCumulativeHistogram() const;

    /// A monotone curve of `points` points (at least 2) at x = i / (points - 1) whose value is
    /// the share of samples below x, so that applying it spreads the values evenly. A histogram
    /// without samples gives the identity.
    Curve computeEqualizingCurve(int points) const;

private:
    Stack<uint64> m_bins;
    uint64 m_maxCount = 0;
};

} // namespace Varnel
