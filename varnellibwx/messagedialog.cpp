#include <varnellibwx/messagedialog.h>

#include <varnellib/native/outsideclick.h>
#include <varnellib/native/process.h>
#include <varnellib/native/screen.h>
#include <varnellib/native/windowowner.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/autosizedbutton.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/windowutils.h>

#include <wx/app.h>
#include <wx/artprov.h>
#include <wx/msgdlg.h>
#include <wx/scrolwin.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>

#include <algorithm>
#include <atomic>
#include <future>

namespace Varnel::Wx {

namespace {

// Ids of the controls, in the order the controls are made.
constinit std::atomic<int> nextControlId{15999};

constexpr int kReturnKey = 13;
constexpr int kNumpadEnterKey = 370;
constexpr int kEscapeKey = 27;
constexpr int kYKey = 89;
constexpr int kNKey = 78;

constexpr int kMargin = 12;
constexpr int kIconGap = 12;
constexpr int kButtonGap = 8;
constexpr int kMinButtonWidth = 80;
constexpr int kMinButtonHeight = 24;
constexpr int kIconSide = 32;
constexpr int kWrapWidth = 420;
// Room the window manager's frame and the button row take beside the message, in the budget of
// the work area.
constexpr int kFrameAllowance = 24;
constexpr int kChromeHeightAllowance = 110;
constexpr int kScrollStep = 8;

bool contains(ArrayView<const MessageDialogControl* const> controls,
              const MessageDialogControl& control) {
    return std::find(controls.begin(), controls.end(), &control) != controls.end();
}

wxArtID artFor(MessageDialogIcon icon) {
    switch (icon) {
    case MessageDialogIcon::Error:
        return wxART_ERROR;
    case MessageDialogIcon::Warning:
        return wxART_WARNING;
    case MessageDialogIcon::Question:
        return wxART_QUESTION;
    case MessageDialogIcon::Information:
        return wxART_INFORMATION;
    case MessageDialogIcon::None:
        break;
    }
    return {};
}

/// A host's native window seen as a wx top-level window, so that the toolkit's message box can
/// be kept above it. It borrows the native widget and never destroys it.
class NativeParentWindow : public wxWindow {
public:
    explicit NativeParentWindow(WindowHandle toplevel) {
        m_widget = static_cast<GtkWidget*>(toplevel.native());
        m_isShown = true;
    }
    ~NativeParentWindow() override { m_widget = nullptr; }
    bool IsTopLevel() const override { return true; }
};

int showNativeMessageDialog(WindowHandle parent, const String& title, const String& message,
                            MessageDialogIcon icon,
                            ArrayView<const MessageDialogControl* const> controls) {
    std::optional<NativeParentWindow> owner;
    if (const WindowHandle top = getTopLevelHandle(parent); !top.isEmpty())
        owner.emplace(top);
    wxMessageDialog dialog(owner ? &*owner : nullptr, toWxString(message), toWxString(title),
                           Detail::nativeMessageStyle(icon, controls));
    return Detail::nativeResultToId(dialog.ShowModal(), controls);
}

} // namespace

MessageDialogControl::MessageDialogControl(Stack<int> keys)
    : id(nextControlId.fetch_add(1)), keys(std::move(keys)) {}

MessageDialogControl::~MessageDialogControl() = default;

MessageDialogButton::MessageDialogButton(String label, Stack<int> keys)
    : MessageDialogControl(std::move(keys)), label(std::move(label)) {}

MessageDialogButton::MessageDialogButton(String label, int key)
    : MessageDialogButton(std::move(label), Stack<int>{key}) {}

MessageDialogButton::~MessageDialogButton() = default;

// Defined in this order, so their ids follow it.
const MessageDialogButton MessageDialogButton::OK(String(L"OK"),
                                                  Stack<int>{kReturnKey, kNumpadEnterKey});
const MessageDialogButton MessageDialogButton::CANCEL(String(L"Cancel"), Stack<int>{});
const MessageDialogButton MessageDialogButton::YES(String(L"Yes"), kYKey);
const MessageDialogButton MessageDialogButton::NO(String(L"No"), kNKey);
const MessageDialogControl MessageDialogControl::FRAME_CLOSE(Stack<int>{kEscapeKey});
const MessageDialogControl MessageDialogControl::FRAME_ICON;
const MessageDialogControl MessageDialogControl::OUTSIDE_CLOSE;

MessageDialog::MessageDialog() = default;

MessageDialog::~MessageDialog() {
    stopWatchingOutside();
}

void MessageDialog::stopWatchingOutside() {
    m_outsideWatch.reset();
    if (m_filtering)
        wxEvtHandler::RemoveFilter(this);
    m_filtering = false;
}

void MessageDialog::EndModal(int returnCode) {
    wxDialog::EndModal(returnCode);
}

bool MessageDialog::Show(bool show) {
    if (show && !m_owner.isEmpty())
        setOwnerFromNativeHandle(getWindowNativeHandle(this), m_owner);
    return wxDialog::Show(show);
}

bool MessageDialog::create(WindowHandle parent, const String& title, String message,
                           MessageDialogIcon icon, Stack<const MessageDialogControl*> controls) {
    message.replaceAll(String(L"\t"), String(L"    "));
    if (!wxDialog::Create(nullptr, wxID_ANY, toWxString(title), wxDefaultPosition, wxDefaultSize,
                          Detail::messageDialogStyle(controls), wxDialogNameStr))
        return false;
    // Escape is one key of the key map like any other, not the toolkit's cancel shortcut.
    SetEscapeId(wxID_NONE);
    if (!parent.isEmpty()) {
        m_owner = parent;
        setOwnerFromNativeHandle(getWindowNativeHandle(this), parent);
        m_ownerWatch = std::make_unique<WindowDestroyWatch>(
            parent, [this] { endWith(MessageDialogControl::FRAME_CLOSE.id); });
    }

    const Bucket owner = getScreenRegion(parent);
    const Bucket workArea =
        !owner.isEmpty()
            ? getMonitorRegionByPoint({owner.x + owner.width / 2, owner.y + owner.height / 2},
                                      MonitorRegionType::WorkArea)
            : getMonitorRegionByWindow(this, MonitorRegionType::WorkArea);
    SetSizer(new wxBoxSizer(wxVERTICAL));
    addMessage(message, icon, workArea);
    addButtons(controls);
    m_keyMap = Detail::buildKeyMap(controls);

    Bind(wxEVT_CLOSE_WINDOW,
         [this](wxCloseEvent&) { endWith(MessageDialogControl::FRAME_CLOSE.id); });
    Bind(wxEVT_CHAR_HOOK, &MessageDialog::onCharHook, this);
    if (contains(controls, MessageDialogControl::FRAME_ICON))
        setVellumIcon(this);
    if (contains(controls, MessageDialogControl::OUTSIDE_CLOSE))
        watchOutside();

    applySkinRecursive(this, GuiSkin());
    Fit();

    // Centred over the owner, or on the dialog's monitor; pulled inside the work area.
    const Bucket region = !owner.isEmpty() ? owner : workArea;
    const wxSize size = GetSize();
    smartPositionWindow(
        this, {region.x + (region.width - size.x) / 2, region.y + (region.height - size.y) / 2});
    return true;
}

void MessageDialog::addMessage(const String& message, MessageDialogIcon icon,
                               const Bucket& workArea) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    int iconWidth = 0;
    if (const wxArtID art = artFor(icon); !art.empty()) {
        const int side = scaleByDpi(kIconSide);
        const wxBitmap bitmap =
            wxArtProvider::GetBitmap(art, wxART_MESSAGE_BOX, wxSize(side, side));
        if (bitmap.IsOk()) {
            row->Add(new wxStaticBitmap(this, wxID_ANY, bitmap), 0, wxRIGHT, scaleByDpi(kIconGap));
            iconWidth = bitmap.GetWidth() + scaleByDpi(kIconGap);
        }
    }

    // The text sits in a scrolled area that is exactly its size when it fits; a message too
    // long or too wide for the monitor scrolls instead of pushing the dialog off the screen.
    const wxSize limit = Detail::messageAreaLimit(workArea, iconWidth);
    auto* area = new wxScrolledWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                      wxVSCROLL | wxHSCROLL | wxBORDER_NONE);
    auto* text = new StaticText(area, wxID_ANY, message);
    text->Wrap(std::min(scaleByDpi(kWrapWidth), limit.x));
    const wxSize best = text->GetBestSize();
    auto* inner = new wxBoxSizer(wxVERTICAL);
    inner->Add(text);
    area->SetSizer(inner);
    area->SetScrollRate(scaleByDpi(kScrollStep), scaleByDpi(kScrollStep));
    const int scrollbar = wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this);
    const int height = std::min(best.y, limit.y);
    const int width = std::min(best.x + (best.y > limit.y ? scrollbar : 0), limit.x);
    area->SetMinSize(wxSize(width, height + (best.x > width ? scrollbar : 0)));
    row->Add(area, 1, wxEXPAND);
    GetSizer()->Add(row, 1, wxEXPAND | wxALL, scaleByDpi(kMargin));
}

void MessageDialog::addButtons(const Stack<const MessageDialogControl*>& controls) {
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    for (const MessageDialogControl* control : controls) {
        const auto* button = dynamic_cast<const MessageDialogButton*>(control);
        if (!button)
            continue;
        if (!buttons->IsEmpty())
            buttons->AddSpacer(scaleByDpi(kButtonGap));
        const int id = button->id;
        buttons->Add(new AutoSizedButton(this, id, toWxString(button->label),
                                         scaleByDpi(kMinButtonWidth), scaleByDpi(kMinButtonHeight),
                                         [this, id] { endWith(id); }));
    }
    if (buttons->IsEmpty()) {
        delete buttons;
        return;
    }
    GetSizer()->Add(buttons, 0, wxALIGN_RIGHT | wxLEFT | wxRIGHT | wxBOTTOM, scaleByDpi(kMargin));
}

void MessageDialog::watchOutside() {
    // The watch takes its pointer grab once the dialog is mapped.
    m_outsideWatch =
        std::make_unique<OutsideClickWatch>(getWindowNativeHandle(this), [this](Pixel) {
            CallAfter([this] { endWith(MessageDialogControl::OUTSIDE_CLOSE.id); });
        });
    wxEvtHandler::AddFilter(this);
    m_filtering = true;
}

int MessageDialog::FilterEvent(wxEvent& event) {
    // Only the activation of another window counts: the dialog itself is deactivated for
    // passing reasons too (its own pointer grab, for one).
    if (event.GetEventType() == wxEVT_ACTIVATE && event.GetEventObject() != this &&
        static_cast<wxActivateEvent&>(event).GetActive()) {
        if (auto* window = dynamic_cast<wxWindow*>(event.GetEventObject());
            window && window->IsTopLevel())
            CallAfter([this] { endWith(MessageDialogControl::OUTSIDE_CLOSE.id); });
    }
    return Event_Skip;
}

void MessageDialog::onCharHook(wxKeyEvent& event) {
    if (const std::optional<int> id = Detail::lookUpKey(m_keyMap, event.GetKeyCode()))
        endWith(*id);
    else
        event.Skip();
}

void MessageDialog::endWith(int id) {
    if (m_ended)
        return;
    m_ended = true;
    stopWatchingOutside();
    if (IsModal()) {
        EndModal(id);
    } else {
        SetReturnCode(id);
        Destroy();
    }
}

bool showOkDialog(WindowHandle parent, const String& title, const String& message,
                  MessageDialogIcon icon) {
    const MessageDialogControl* controls[] = {&MessageDialogButton::OK,
                                              &MessageDialogControl::FRAME_CLOSE};
    return Detail::showMessageDialogImpl(parent, title, message, icon, controls) ==
           MessageDialogButton::OK.id;
}

bool showOkCancelDialog(WindowHandle parent, const String& title, const String& message,
                        MessageDialogIcon icon) {
    const MessageDialogControl* controls[] = {&MessageDialogButton::OK,
                                              &MessageDialogButton::CANCEL};
    return Detail::showMessageDialogImpl(parent, title, message, icon, controls) ==
           MessageDialogButton::OK.id;
}

bool showYesNoDialog(WindowHandle parent, const String& title, const String& message,
                     MessageDialogIcon icon) {
    const MessageDialogControl* controls[] = {&MessageDialogButton::YES, &MessageDialogButton::NO};
    return Detail::showMessageDialogImpl(parent, title, message, icon, controls) ==
           MessageDialogButton::YES.id;
}

namespace Detail {

int showMessageDialogImpl(WindowHandle parent, const String& title, const String& message,
                          MessageDialogIcon icon,
                          ArrayView<const MessageDialogControl* const> controls) {
    Stack<const MessageDialogControl*> all(controls);
    all.push(&MessageDialogControl::FRAME_ICON);
    if (!wxTheApp)
        return MessageDialogControl::FRAME_CLOSE.id;

    if (!isMainThread()) {
        // GTK belongs to the main thread: it shows the box, this thread waits for the answer.
        std::promise<int> answer;
        std::future<int> answered = answer.get_future();
        wxTheApp->CallAfter(
            [&] { answer.set_value(showNativeMessageDialog(parent, title, message, icon, all)); });
        return answered.get();
    }

    auto* dialog = new MessageDialog;
    if (!dialog->create(parent, title, message, icon, std::move(all))) {
        delete dialog;
        return MessageDialogControl::FRAME_CLOSE.id;
    }
    const int result = dialog->ShowModal();
    dialog->Destroy();
    return result;
}

long messageDialogStyle(ArrayView<const MessageDialogControl* const> controls) {
    long style = wxCAPTION;
    if (contains(controls, MessageDialogControl::FRAME_CLOSE))
        style |= wxCLOSE_BOX;
    if (contains(controls, MessageDialogControl::FRAME_ICON))
        style |= wxSYSTEM_MENU;
    return style;
}

std::vector<std::pair<int, int>>
buildKeyMap(ArrayView<const MessageDialogControl* const> controls) {
    std::vector<std::pair<int, int>> map;
    for (const MessageDialogControl* control : controls)
        for (int key : control->keys)
            map.emplace_back(key, control->id);
    std::stable_sort(map.begin(), map.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    return map;
}

std::optional<int> lookUpKey(const std::vector<std::pair<int, int>>& keyMap, int keyCode) {
    const auto found = std::lower_bound(
        keyMap.begin(), keyMap.end(), keyCode,
        [](const std::pair<int, int>& entry, int key) { return entry.first < key; });
    if (found == keyMap.end() || found->first != keyCode)
        return std::nullopt;
    return found->second;
}

long nativeMessageStyle(MessageDialogIcon icon,
                        ArrayView<const MessageDialogControl* const> controls) {
    long style = wxSTAY_ON_TOP | wxCENTRE;
    switch (icon) {
    case MessageDialogIcon::None:
        style |= wxICON_NONE;
        break;
    case MessageDialogIcon::Error:
        style |= wxICON_HAND;
        break;
    case MessageDialogIcon::Warning:
        style |= wxICON_EXCLAMATION;
        break;
    case MessageDialogIcon::Question:
        style |= wxICON_QUESTION;
        break;
    case MessageDialogIcon::Information:
        style |= wxICON_INFORMATION;
        break;
    }
    if (contains(controls, MessageDialogButton::YES) && contains(controls, MessageDialogButton::NO))
        style |= wxYES_NO;
    if (contains(controls, MessageDialogButton::OK))
        style |= wxOK;
    if (contains(controls, MessageDialogButton::CANCEL))
        style |= wxCANCEL;
    return style;
}

int nativeResultToId(int result, ArrayView<const MessageDialogControl* const> controls) {
    switch (result) {
    case wxID_OK:
        return MessageDialogButton::OK.id;
    case wxID_YES:
        return MessageDialogButton::YES.id;
    case wxID_NO:
        return MessageDialogButton::NO.id;
    case wxID_CANCEL:
        if (contains(controls, MessageDialogButton::CANCEL))
            return MessageDialogButton::CANCEL.id;
        break;
    default:
        break;
    }
    return MessageDialogControl::FRAME_CLOSE.id;
}

wxSize messageAreaLimit(const Bucket& workArea, int iconWidth) {
    const int width = workArea.width - 2 * scaleByDpi(kMargin) - iconWidth - kFrameAllowance;
    const int height = workArea.height - scaleByDpi(kChromeHeightAllowance);
    return {std::max(width, scaleByDpi(kMinButtonWidth)), std::max(height, scaleByDpi(kIconSide))};
}

} // namespace Detail
} // namespace Varnel::Wx
