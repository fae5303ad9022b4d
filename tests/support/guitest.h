#pragma once

// What every test under the X server starts from: real input, modal dialogs driven from inside
// their loops, pixels read back, event pumping with deadlines and call logs.
#include "input.h"
#include "modal.h"
#include "pixels.h"
#include "prelude.h"
#include "pump.h"
#include "recorders.h"

#include <wx/frame.h>

namespace Varnel::Test {

using Calls = std::vector<std::string>;

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

/// Waits for `window` to be on screen and hands it the keyboard (there is no window manager to
/// do it); returns whether it became the active window within 2 s.
bool raiseAndActivate(wxTopLevelWindow& window);

/// Installs the wxWidgets assertion handler that fails the running test with the library's own
/// assertion text.
void installAssertHandler();

} // namespace Varnel::Test

namespace Varnel::Wx {}
using namespace Varnel::Wx;
