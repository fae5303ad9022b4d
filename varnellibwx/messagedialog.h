#pragma once

#include <varnellib/base/arrayview.h>
#include <varnellib/base/stack.h>
#include <varnellib/base/string.h>
#include <varnellib/native/windowhandle.h>
#include <varnellibwx/export.h>

#include <wx/dialog.h>
#include <wx/eventfilter.h>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace Varnel {
class OutsideClickWatch;
class WindowDestroyWatch;
} // namespace Varnel

namespace Varnel::Wx {

/// The picture at the left of a message.
enum class MessageDialogIcon : int {
    None = 0,
    Error = 1,
    Warning = 2,
    Question = 3,
    Information = 4
};

/// Something that can end a message dialog: a button, or a feature of the dialog's frame. Each
/// control object has its own id, taken from a process-wide counter whose first value is 15999;
/// the dialog answers with the id of the control that ended it, so callers compare the answer
/// with the `id` of a control, never with a number. `keys` are the key codes that choose the
/// control from the keyboard.
///
/// The frame features:
/// - FRAME_CLOSE: the frame gets a close box, and Escape chooses it. Every dialog answers a close
///   request of the frame with FRAME_CLOSE's id, whether or not it is among the controls.
/// - FRAME_ICON: the frame gets its system menu and the product icon (always added).
/// - OUTSIDE_CLOSE: the dialog behaves like a popup. A mouse press anywhere outside it (on the
///   desktop, on another program or on another window of the application) or the activation of
///   another window of the application ends it with OUTSIDE_CLOSE's id.
class VARNEL_LIBWX_EXPORT MessageDialogControl {
public:
    explicit MessageDialogControl(Stack<int> keys = {});
    virtual ~MessageDialogControl();
    MessageDialogControl(const MessageDialogControl&) = delete;
    MessageDialogControl& operator=(const MessageDialogControl&) = delete;

    const int id;
    const Stack<int> keys;

    static const MessageDialogControl FRAME_CLOSE;
    static const MessageDialogControl FRAME_ICON;
    static const MessageDialogControl OUTSIDE_CLOSE;
};

/// A button of a message dialog, in the bordered look, labelled `label`.
class VARNEL_LIBWX_EXPORT MessageDialogButton : public MessageDialogControl {
public:
    MessageDialogButton(String label, Stack<int> keys);
    MessageDialogButton(String label, int key);
    ~MessageDialogButton() override;

    const String label;

    /// "OK", chosen by Return and the keypad's Enter.
    static const MessageDialogButton OK;
    /// "Cancel", with no key.
    static const MessageDialogButton CANCEL;
    /// "Yes", chosen by Y.
    static const MessageDialogButton YES;
    /// "No", chosen by N.
    static const MessageDialogButton NO;
};

namespace Detail {

/// Shows a message dialog with `controls` (FRAME_ICON is always added) and returns the id of the
/// control chosen. On the main thread it is the library's dialog. From any other thread the
/// request is handed to the main thread through the application's event queue, the calling
/// thread waits, and the main thread shows the toolkit's native message box with the same
/// buttons; its answer is mapped back to the controls' ids. Without a running application (no
/// display) it shows nothing and answers FRAME_CLOSE's id.
VARNEL_LIBWX_EXPORT int
showMessageDialogImpl(WindowHandle parent, const String& title, const String& message,
                      MessageDialogIcon icon,
                      ArrayView<const MessageDialogControl* const> controls);

} // namespace Detail

/// The library's modal message box: the message (tabs shown as four spaces, wrapped, and scrolled
/// when it would not fit on the monitor's work area) beside its icon, a row of buttons, skinned
/// and placed over its owner (or on its monitor). It answers with the id of the control chosen by
/// a button, a key or the frame. Shown through the show functions below; it is not a child of any
/// wx window, only kept above its owner's native window.
class VARNEL_LIBWX_EXPORT MessageDialog : public wxDialog, private wxEventFilter {
public:
    ~MessageDialog() override;

    void EndModal(int returnCode) override;
    /// Puts the native owner back first: wx hands a parentless modal dialog the application's
    /// top window as its owner when it shows it, which is not the owner asked for when the host
    /// gave a native window of its own.
    bool Show(bool show = true) override;

private:
    friend int Detail::showMessageDialogImpl(WindowHandle, const String&, const String&,
                                             MessageDialogIcon,
                                             ArrayView<const MessageDialogControl* const>);

    MessageDialog();
    bool create(WindowHandle parent, const String& title, String message, MessageDialogIcon icon,
                Stack<const MessageDialogControl*> controls);
    void addMessage(const String& message, MessageDialogIcon icon, const Bucket& workArea);
    void addButtons(const Stack<const MessageDialogControl*>& controls);
    void watchOutside();
    void stopWatchingOutside();
    /// Sees every event of the application while OUTSIDE_CLOSE is among the controls.
    int FilterEvent(wxEvent& event) override;
    void onCharHook(wxKeyEvent& event);
    /// Ends the dialog with `id`, once.
    void endWith(int id);

    std::vector<std::pair<int, int>> m_keyMap;
    std::unique_ptr<OutsideClickWatch> m_outsideWatch;
    WindowHandle m_owner;
    /// Ends the dialog with FRAME_CLOSE when the owner's window is destroyed under it.
    std::unique_ptr<WindowDestroyWatch> m_ownerWatch;
    bool m_filtering = false;
    bool m_ended = false;
};

/// OK and a close box: true only when OK is chosen (the button, Return or the keypad's Enter);
/// Escape and the close box answer false.
VARNEL_LIBWX_EXPORT bool showOkDialog(WindowHandle parent, const String& title,
                                      const String& message, MessageDialogIcon icon);
/// OK and Cancel: true for OK.
VARNEL_LIBWX_EXPORT bool showOkCancelDialog(WindowHandle parent, const String& title,
                                            const String& message, MessageDialogIcon icon);
/// Yes and No, without a close box or Escape: true for Yes.
VARNEL_LIBWX_EXPORT bool showYesNoDialog(WindowHandle parent, const String& title,
                                         const String& message, MessageDialogIcon icon);

namespace Detail {

/// The frame style: a caption always, a close box with FRAME_CLOSE, the system menu with
/// FRAME_ICON.
VARNEL_LIBWX_EXPORT long messageDialogStyle(ArrayView<const MessageDialogControl* const> controls);

/// Every key of every control with the control's id, sorted by key code (a key that two
/// controls share chooses the first of them).
VARNEL_LIBWX_EXPORT std::vector<std::pair<int, int>>
buildKeyMap(ArrayView<const MessageDialogControl* const> controls);
/// The id that `keyCode` chooses in a map from buildKeyMap (binary search).
VARNEL_LIBWX_EXPORT std::optional<int> lookUpKey(const std::vector<std::pair<int, int>>& keyMap,
                                                 int keyCode);

/// The native message box's style for an icon and the controls: the icon's style with
/// wxSTAY_ON_TOP and wxCENTRE, then wxYES_NO for YES and NO together, wxOK for OK, wxCANCEL for
/// CANCEL.
VARNEL_LIBWX_EXPORT long nativeMessageStyle(MessageDialogIcon icon,
                                            ArrayView<const MessageDialogControl* const> controls);
/// The control id that a native message box's answer stands for: wxID_OK, wxID_YES, wxID_NO and
/// wxID_CANCEL give OK's, YES's, NO's and CANCEL's ids; a box closed without a button (which
/// answers wxID_CANCEL without a Cancel button) gives FRAME_CLOSE's.
VARNEL_LIBWX_EXPORT int nativeResultToId(int result,
                                         ArrayView<const MessageDialogControl* const> controls);

/// The largest area the message may take so that the dialog stays inside `workArea`, given
/// the width the icon takes beside it; the message scrolls inside it when it is larger.
VARNEL_LIBWX_EXPORT wxSize messageAreaLimit(const Bucket& workArea, int iconWidth);

} // namespace Detail
} // namespace Varnel::Wx
