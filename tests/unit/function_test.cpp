#include <varnellib/base/function.h>

#include "prelude.h"

TEST(Function, CopiesShareOneCallableAndItsState) {
    int calls = 0;
    Function<int()> counter = [calls]() mutable {
        return ++calls;
    };
    Function<int()> copy = counter;
    EXPECT_EQ(counter(), 1);
    EXPECT_EQ(copy(), 2); // the copy sees the same lambda state
    EXPECT_EQ(counter(), 3);
    EXPECT_TRUE(copy == counter);
    EXPECT_EQ(calls, 0); // captured by value: the original variable is untouched
}

TEST(Function, EmptyFunctionsAreNotCalled) {
    Function<void(int)> none;
    Function<int(int)> noneWithResult = nullptr;
    EXPECT_FALSE(none);
    none(1); // does nothing
    EXPECT_EQ(noneWithResult(5), 0);

    int (*nullPointer)(int) = nullptr;
    Function<int(int)> fromNull = nullPointer;
    EXPECT_FALSE(fromNull);
    EXPECT_EQ(fromNull(3), 0);
}
