// The main of every GUI test binary but the lifecycle tests: the library is started once for
// the whole binary, as a host would, and every wxWidgets assertion fails the running test.
#include "guitest.h"

#include <varnellib/native/process.h>
#include <varnellibwx/varnellibwx.h>

#include <wx/app.h>

namespace {

class LibraryEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        Varnel::Test::installAssertHandler();
        Varnel::LibWx::startup(Varnel::LibWx::ApplicationType::Default);
        ASSERT_NE(wxAppConsole::GetInstance(), nullptr)
            << "wxWidgets did not start: is there an X display (DISPLAY)?";
        // Pixels are read as they end up, not half way through a theme's colour transition.
        Varnel::Lib::setNativeAnimations(false);
    }
    void TearDown() override { Varnel::LibWx::shutdown(); }
};

} // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new LibraryEnvironment);
    return RUN_ALL_TESTS();
}
