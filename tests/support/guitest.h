#pragma once

#include <gtest/gtest.h>

class wxFrame;

namespace Varnel::Test {

/// A test with a fresh, shown top-level frame to put widgets in. The library itself is started
/// once per test binary (see guimain.cpp); the frame is destroyed after each test.
class GuiTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    wxFrame& parent() const { return *m_parent; }

private:
    wxFrame* m_parent = nullptr;
};

/// Installs the wxWidgets assertion handler that fails the running test with the library's own
/// assertion text.
void installAssertHandler();

} // namespace Varnel::Test
