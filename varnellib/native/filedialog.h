#pragma once

#include <varnellib/base/flags.h>
#include <varnellib/base/string.h>
#include <varnellib/export.h>
#include <varnellib/io/path.h>
#include <varnellib/native/windowhandle.h>

namespace Varnel {

enum class FileSelect : uint32 {
    /// Ask before a chosen file that exists is overwritten.
    AskOverwrite = 1,
};

/// Asks the user for an existing file to open, in a modal file chooser over `owner`. `filter` is
/// in the wxWidgets form ("Photoshop curve files (*.acv)|*.acv"); `initialPath` chooses the
/// folder and file name shown first. Returns an empty path when the user cancels.
VARNEL_LIB_EXPORT Io::Path filenameOpenDlg(WindowHandle owner, const String& title,
                                           const String& filter, const Io::Path& initialPath);

/// Asks the user for a file to save to; with FileSelect::AskOverwrite an existing file must be
/// confirmed. Returns an empty path when the user cancels.
VARNEL_LIB_EXPORT Io::Path filenameSaveDlg(WindowHandle owner, const String& title,
                                           const String& filter, Flags<FileSelect> flags,
                                           const Io::Path& initialPath);

} // namespace Varnel
