#include <varnellib/base/array.h>
#include <varnellib/base/expected.h>
#include <varnellib/base/memory.h>
#include <varnellib/base/stack.h>

#include "prelude.h"

#include <cstdint>
#include <memory>

TEST(Memory, BlocksHonourTheAlignmentAsked) {
    for (uint64 alignment : {1u, 4u, 8u, 16u, 64u, 4096u}) {
        for (uint64 size : {0u, 1u, 3u, 100u}) {
            void* block = varnelMalloc(size, alignment);
            ASSERT_NE(block, nullptr);
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignment, 0u)
                << "alignment " << alignment << " size " << size;
            varnelFree(block);
        }
    }
    varnelFree(nullptr);
    EXPECT_THROW(varnelMalloc(8, 3), StopException);
    EXPECT_THROW(varnelMalloc(8, 0), StopException);

    struct alignas(16) Pixel {
        float lanes[4];
    };
    Stack<Pixel> pixels;
    for (int i = 0; i < 5; ++i)
        pixels.push(Pixel{});
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pixels.data()) % 16, 0u);
}

TEST(Stack, CapacityGrowsToTheLargerOfNeedAndOneAndAHalf) {
    Stack<int> stack;
    std::vector<int> capacities;
    for (int i = 0; i < 30; ++i) {
        const int before = stack.capacity();
        stack.push(i);
        if (stack.capacity() != before)
            capacities.push_back(stack.capacity());
    }
    EXPECT_EQ(capacities, (std::vector<int>{1, 2, 3, 4, 6, 9, 13, 19, 28, 42}));
    stack.resize(42);
    stack.push(stack[0]); // an element of its own, pushed while the stack grows
    EXPECT_EQ(stack.top(), 0);

    // A resize that needs more than half again takes exactly what it needs.
    Stack<int> big;
    big.push(1);
    big.resize(10);
    EXPECT_EQ(big.capacity(), 10);
    big.insert(0, 0);
    EXPECT_EQ(big.capacity(), 15);
    EXPECT_EQ(big[0], 0);
    EXPECT_EQ(big[1], 1);
}

TEST(Stack, PushPopInsertEraseKeepOrder) {
    Stack<std::unique_ptr<int>> owned; // move-only elements survive regrowth
    for (int i = 0; i < 10; ++i)
        owned.push(std::make_unique<int>(i));
    EXPECT_EQ(*owned.pop(), 9);
    owned.erase(0);
    owned.insert(2, std::make_unique<int>(42));
    std::vector<int> values;
    for (const auto& value : owned)
        values.push_back(*value);
    EXPECT_EQ(values, (std::vector<int>{1, 2, 42, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(*owned.top(), 8);

    Stack<int> empty;
    EXPECT_THROW(empty.pop(), StopException);
    EXPECT_THROW(empty[0], StopException);
    EXPECT_THROW(empty.erase(0), StopException);
    EXPECT_THROW(empty.insert(1, 0), StopException);
}

TEST(ArrayAndView, ViewsShareTheElementsAndIndexingIsChecked) {
    Array<int> array{3, 1, 4, 1, 5};
    ArrayView<int> view = array.view();
    view[1] = 9;
    EXPECT_EQ(array[1], 9);
    EXPECT_THROW(array[5], StopException);
    EXPECT_THROW(view[-1], StopException);
    EXPECT_THROW(Array<int>(-1), StopException);
}

TEST(Expected, HoldsValueOrErrorAndGuardsTheOtherHalf) {
    Expected<int> good = 5;
    Expected<int> bad = Unexpected{String(L"Cannot load curves from a file.")};
    ASSERT_TRUE(good);
    EXPECT_EQ(good.value(), 5);
    EXPECT_THROW(good.error(), StopException);
    ASSERT_FALSE(bad);
    EXPECT_EQ(bad.error(), String(L"Cannot load curves from a file."));
    EXPECT_THROW(bad.value(), StopException);
    EXPECT_EQ(bad.valueOr(7), 7);
}
