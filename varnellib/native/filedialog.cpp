#include <varnellib/native/filedialog.h>
#include <varnellib/native/windowowner.h>

#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/toplevel.h>

namespace Varnel {

namespace {

wxString toWx(const String& text) {
    return wxString(text.asWchar(), static_cast<std::size_t>(text.length()));
}

// The wx window behind a native handle, if the owner is one of ours.
wxWindow* findWxWindow(WindowHandle handle) {
    if (handle.isEmpty())
        return nullptr;
    for (wxWindow* window : wxTopLevelWindows)
        if (window->GetHandle() == handle.native())
            return window;
    return nullptr;
}

Io::Path runFileDialog(WindowHandle owner, const String& title, const String& filter, long style,
                       const Io::Path& initialPath) {
    const wxFileName initial(toWx(initialPath.string()));
    wxWindow* parent = findWxWindow(owner);
    wxFileDialog dialog(parent, toWx(title), initial.GetPath(), initial.GetFullName(), toWx(filter),
                        style);
    // A host's own GTK window: keep the chooser above it all the same.
    if (!parent && !owner.isEmpty())
        setOwnerFromNativeHandle(WindowHandle(dialog.GetHandle()), owner);
    if (dialog.ShowModal() != wxID_OK)
        return {};
    const wxString path = dialog.GetPath();
    return Io::Path(String(path.wc_str(), static_cast<int>(path.length())));
}

} // namespace

Io::Path filenameOpenDlg(WindowHandle owner, const String& title, const String& filter,
                         const Io::Path& initialPath) {
    return runFileDialog(owner, title, filter, wxFD_OPEN | wxFD_FILE_MUST_EXIST, initialPath);
}

Io::Path filenameSaveDlg(WindowHandle owner, const String& title, const String& filter,
                         Flags<FileSelect> flags, const Io::Path& initialPath) {
    long style = wxFD_SAVE;
    if (flags.has(FileSelect::AskOverwrite))
        style |= wxFD_OVERWRITE_PROMPT;
    return runFileDialog(owner, title, filter, style, initialPath);
}

} // namespace Varnel
