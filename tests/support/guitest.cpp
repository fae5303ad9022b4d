#include "guitest.h"
#include "pump.h"

#include <varnellibwx/varnellibwx.h>

#include <wx/display.h>
#include <wx/frame.h>
#include <wx/uiaction.h>

namespace Varnel::Test {

namespace {

constexpr int kParentWidth = 480;
constexpr int kParentHeight = 360;

void failOnAssert(const wxString& file, int line, const wxString& function,
                  const wxString& condition, const wxString& message) {
    if (const auto text = Wx::formatWxAssertFailure(file, line, function, condition, message))
        ADD_FAILURE() << text->toUtf8().data();
}

} // namespace

bool raiseAndActivate(wxTopLevelWindow& window) {
    if (!pumpUntil([&] { return window.IsShownOnScreen(); }))
        return false;
    window.Raise();
    return pumpUntil([&] { return window.IsActive(); }, 2s);
}

void installAssertHandler() {
    wxSetAssertHandler(&failOnAssert);
}

void GuiTest::SetUp() {
    m_parent = new wxFrame(nullptr, wxID_ANY, "Test", wxPoint(40, 40),
                           wxSize(kParentWidth, kParentHeight));
    // A frame stretches a sole child over its whole client area; a hidden second child keeps
    // what a test places where the test puts it.
    (new wxWindow(m_parent, wxID_ANY, wxDefaultPosition, wxSize(0, 0)))->Hide();
    m_parent->Show();
    // Keys typed in a test reach the frame only once it is the active window.
    EXPECT_TRUE(raiseAndActivate(*m_parent)) << "the frame got no keys";
    // Every test starts with the pointer moved away from its frame: when the previous test left
    // the pointer where this frame appeared, the next press or release there was lost on GTK.
    // (Moved once the frame is on screen: the simulator reads the active window's scale.)
    const wxRect screen = wxDisplay(0u).GetGeometry();
    const wxPoint parking(screen.GetRight(), screen.GetBottom());
    wxUIActionSimulator().MouseMove(parking);
    pumpUntil([&] { return wxGetMousePosition() == parking; }, 2s);
    pumpPending();
}

void GuiTest::TearDown() {
    if (!m_parent)
        return;
    m_parent->Destroy();
    m_parent = nullptr;
    EXPECT_TRUE(pumpUntil([] { return wxTopLevelWindows.IsEmpty(); }))
        << "a top-level window outlived its test";
}

} // namespace Varnel::Test
