#pragma once

// What every test starts from: GoogleTest, the special floats the tables use, and the library's
// names unqualified.
#include <varnellib/base/stopexception.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace Varnel::Test {

inline constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
inline constexpr float kInf = std::numeric_limits<float>::infinity();

/// Runs `call` and checks that it raised the stop exception of `file` at `line`.
inline void expectStop(const std::function<void()>& call, const char* file, int line) {
    try {
        call();
        ADD_FAILURE() << "no stop exception from " << file << " line " << line;
    } catch (const StopException& stop) {
        EXPECT_STREQ(stop.file(), file);
        EXPECT_EQ(stop.line(), line);
    }
}

} // namespace Varnel::Test

using namespace Varnel;
using namespace Varnel::Test;
