#include <varnellib/utility/colorcurve.h>
#include <varnellib/utility/colorgradient.h>
#include <varnellib/utility/curve.h>
#include <varnellib/utility/histogram.h>

#include "prelude.h"

#include <random>

namespace {

Curve curveThrough(std::initializer_list<CurvePoint> points, int interpolation = Curve::Cubic) {
    Curve curve;
    curve.points() = Stack<CurvePoint>(points);
    curve.setInterpolation(interpolation);
    return curve;
}

std::vector<float> samples(int count, float from, float to) {
    std::vector<float> xs;
    for (int i = 0; i < count; ++i)
        xs.push_back(from + (to - from) * static_cast<float>(i) / static_cast<float>(count - 1));
    return xs;
}

} // namespace

TEST(Curve, TheDefaultIsTheIdentity) {
    const Curve curve;
    EXPECT_TRUE(curve.isIdentity());
    for (float x : samples(101, 0.f, 1.f))
        EXPECT_NEAR(curve(x), x, 1e-6f);
    EXPECT_TRUE(curveThrough({{0, 0}, {0.5f, 0.5f}, {1, 1}}).isIdentity());
    EXPECT_FALSE(curveThrough({{0, 0}, {0.5f, 0.6f}, {1, 1}}).isIdentity());
    EXPECT_FALSE(curveThrough({{0.2f, 0.2f}, {1, 1}}).isIdentity()); // holds 0.2 below 0.2
    EXPECT_FALSE(curveThrough({{0.5f, 0.5f}}).isIdentity());
}

TEST(Curve, PassesThroughItsPointsAndHoldsTheEnds) {
    for (int mode : {Curve::Cubic, Curve::Linear}) {
        const Curve curve =
            curveThrough({{0.1f, 0.2f}, {0.4f, 0.7f}, {0.6f, 0.65f}, {0.9f, 1.f}}, mode);
        for (const CurvePoint& p : curve.points())
            EXPECT_FLOAT_EQ(curve(p.x), p.y) << "mode " << mode;
        EXPECT_EQ(curve(-3.f), 0.2f);
        EXPECT_EQ(curve(0.f), 0.2f);
        EXPECT_EQ(curve(0.95f), 1.f);
        EXPECT_EQ(curve(kInf), 1.f);
    }
    EXPECT_FLOAT_EQ(curveThrough({{0, 0}, {1, 1}}, Curve::Linear)(0.25f), 0.25f);
}

TEST(Curve, CubicNeverOvershootsItsNeighbours) {
    // A sharp step is where ordinary splines ring.
    const Curve curve = curveThrough(
        {{0, 0}, {0.45f, 0.02f}, {0.5f, 0.98f}, {0.55f, 1.f}, {0.8f, 0.2f}, {1, 0.21f}});
    const auto& p = curve.points();
    for (int segment = 0; segment + 1 < p.size(); ++segment) {
        const float low = std::min(p[segment].y, p[segment + 1].y);
        const float high = std::max(p[segment].y, p[segment + 1].y);
        float previous = curve(p[segment].x);
        for (float x : samples(50, p[segment].x, p[segment + 1].x)) {
            const float y = curve(x);
            EXPECT_GE(y, low - 1e-6f) << x;
            EXPECT_LE(y, high + 1e-6f) << x;
            // Monotone data stays monotone.
            if (p[segment + 1].y >= p[segment].y)
                EXPECT_GE(y, previous - 1e-6f) << x;
            else
                EXPECT_LE(y, previous + 1e-6f) << x;
            previous = y;
        }
    }
}

TEST(Curve, BatchEvaluationMatchesSingleSamples) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> unit(0.f, 1.f);
    for (int mode : {Curve::Cubic, Curve::Linear}) {
        Curve curve;
        curve.setInterpolation(mode);
        curve.points().clear();
        for (int i = 0; i < 16; ++i)
            curve.points().push({i / 15.f, unit(random)});
        // Increasing, then out of order, repeated and out of range.
        std::vector<float> xs = samples(300, -0.1f, 1.1f);
        xs.insert(xs.end(), {0.5f, 0.2f, 0.2f, kNaN, 0.7f, 2.f, -1.f, 0.9f});
        std::vector<float> ys(xs.size());
        curve.evaluate(ArrayView<const float>(xs), ArrayView<float>(ys));
        for (std::size_t i = 0; i < xs.size(); ++i)
            EXPECT_EQ(ys[i], curve(xs[i])) << "x " << xs[i] << " mode " << mode;
    }
}

TEST(Curve, DegenerateListsStayDefined) {
    Curve empty;
    empty.points().clear();
    EXPECT_EQ(empty(0.3f), 0.3f);
    EXPECT_EQ(curveThrough({{0.5f, 0.25f}})(0.9f), 0.25f);

    const Curve unsorted = curveThrough({{0.8f, 0.1f}, {0.2f, 0.9f}, {0.5f, 0.5f}});
    const Curve shared = curveThrough({{0, 0}, {0.5f, 0.2f}, {0.5f, 0.8f}, {1, 1}});
    const Curve withNan = curveThrough({{0, 0}, {kNaN, 0.5f}, {1, kNaN}});
    for (const Curve* curve : {&unsorted, &shared, &withNan}) {
        for (float x : {-1.f, 0.f, 0.25f, 0.5f, 0.75f, 1.f, 2.f, kNaN}) {
            std::vector<float> xs{x}, ys{0.f};
            curve->evaluate(ArrayView<const float>(xs), ArrayView<float>(ys));
            const float y = (*curve)(x);
            EXPECT_TRUE(std::isnan(y) ? std::isnan(ys[0]) : y == ys[0]);
        }
    }
    EXPECT_EQ(unsorted(kNaN), 0.1f); // NaN asks for the first point
    EXPECT_THROW(empty.setInterpolation(2), StopException);
}

TEST(ColorCurve, IndexesFourChannels) {
    ColorCurve curves;
    EXPECT_TRUE(curves.isIdentity());
    curves[CurveChannel::Blue].points()[1].y = 0.5f;
    EXPECT_FALSE(curves.isIdentity());
    EXPECT_TRUE(curves[CurveChannel::Red].isIdentity());
    EXPECT_THROW(curves[static_cast<CurveChannel>(4)], StopException);
}

TEST(ColorGradient, InterpolatesSortedPointsAndHoldsTheEnds) {
    ColorGradient gradient;
    EXPECT_EQ(gradient.getColorAt(0.5f), ColorGradient::kEmptyColor);
    EXPECT_EQ(gradient.addPoint(Rgb(1, 1, 1, 1), 1.f), 0);
    EXPECT_EQ(gradient.addPoint(Rgb(0, 0, 0, 0), 0.f), 0);
    EXPECT_EQ(gradient.addPoint(Rgb(1, 0, 0, 1), 0.5f), 1);
    EXPECT_EQ(gradient.getColorAt(0.25f), Rgb(0.5f, 0, 0, 0.5f));
    EXPECT_EQ(gradient.getColorAt(0.75f), Rgb(1, 0.5f, 0.5f, 1));
    EXPECT_EQ(gradient.getColorAt(-1.f), Rgb(0, 0, 0, 0));
    EXPECT_EQ(gradient.getColorAt(7.f), Rgb(1, 1, 1, 1));
    EXPECT_EQ(gradient.getColorAt(kNaN), Rgb(0, 0, 0, 0));

    // Moving the red point past the white one re-sorts it.
    EXPECT_EQ(gradient.setPosition(1, 2.f), 2);
    EXPECT_EQ(gradient.points()[2].color, Rgb(1, 0, 0, 1));
    gradient.removePoint(0);
    EXPECT_EQ(gradient.getColorAt(0.f), Rgb(1, 1, 1, 1));
    // Equal positions: a step, and the later point starts it.
    gradient.addPoint(Rgb(0, 1, 0, 1), 2.f);
    EXPECT_EQ(gradient.getColorAt(2.f), Rgb(0, 1, 0, 1));
}

TEST(Histogram, CumulativeSumsAndEqualizingCurves) {
    EXPECT_TRUE(Histogram().getCumulativeHistogram().isEmpty());
    EXPECT_TRUE(Histogram().computeEqualizingCurve(16).isIdentity());
    EXPECT_TRUE(Histogram(Stack<uint64>{0, 0, 0}).computeEqualizingCurve(16).isIdentity());

    const Histogram histogram(Stack<uint64>{6, 0, 2, 0});
    EXPECT_EQ(histogram.maxCount(), 6u);
    EXPECT_EQ(histogram.getCumulativeHistogram(), (Stack<float>{0.75f, 0.75f, 1.f, 1.f}));

    const Curve equalizing = histogram.computeEqualizingCurve(5);
    ASSERT_EQ(equalizing.points().size(), 5);
    const float expected[] = {0.f, 0.75f, 0.75f, 1.f, 1.f};
    for (int i = 0; i < 5; ++i) {
        EXPECT_FLOAT_EQ(equalizing.points()[i].x, i / 4.f);
        EXPECT_FLOAT_EQ(equalizing.points()[i].y, expected[i]);
    }
    // Uniform data equalises to (nearly) the identity.
    const Curve flat = Histogram(Stack<uint64>{5, 5, 5, 5, 5, 5, 5, 5}).computeEqualizingCurve(16);
    for (const CurvePoint& p : flat.points())
        EXPECT_NEAR(p.y, p.x, 1e-6f);
    EXPECT_THROW(histogram.computeEqualizingCurve(1), StopException);
}
