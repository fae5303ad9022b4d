// The parts of message dialogs that need no display: the controls' ids and keys, the frame
// style, the key map, the native box's style and answers, and the size budget.
#include <varnellibwx/dpi.h>
#include <varnellibwx/messagedialog.h>
#include <varnellibwx/widgets/autosizedbutton.h>

#include <wx/msgdlg.h>

#include "prelude.h"

using namespace Varnel::Wx;

namespace {

using DialogButton = MessageDialogButton;
using DialogControl = MessageDialogControl;
using Controls = std::vector<const MessageDialogControl*>;

ArrayView<const MessageDialogControl* const> view(const Controls& controls) {
    return {controls.data(), static_cast<int>(controls.size())};
}

} // namespace

TEST(MessageDialogControls, IdsFollowTheOrderOfDeclarationFrom15999) {
    const MessageDialogControl* statics[] = {&DialogButton::OK,
                                             &DialogButton::CANCEL,
                                             &DialogButton::YES,
                                             &DialogButton::NO,
                                             &DialogControl::FRAME_CLOSE,
                                             &DialogControl::FRAME_ICON,
                                             &DialogControl::OUTSIDE_CLOSE};
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(statics[i]->id, 15999 + i);
    // Every further control takes the next id.
    const MessageDialogButton retry(String(L"Retry"), 'R');
    const MessageDialogButton another(String(L"Another"), Stack<int>{});
    EXPECT_EQ(another.id, retry.id + 1);
    EXPECT_GT(retry.id, DialogControl::OUTSIDE_CLOSE.id);

    EXPECT_EQ(DialogButton::OK.keys, (Stack<int>{13, 370}));
    EXPECT_TRUE(DialogButton::CANCEL.keys.isEmpty());
    EXPECT_EQ(DialogButton::YES.keys, Stack<int>{89});
    EXPECT_EQ(DialogButton::NO.keys, Stack<int>{78});
    EXPECT_EQ(DialogControl::FRAME_CLOSE.keys, Stack<int>{27});
    EXPECT_EQ(DialogButton::OK.label, String(L"OK"));
    EXPECT_EQ(DialogButton::CANCEL.label, String(L"Cancel"));
}

TEST(MessageDialogControls, FrameStyleFollowsTheFrameFeatures) {
    EXPECT_EQ(Wx::Detail::messageDialogStyle(view({&DialogButton::OK})), wxCAPTION);
    EXPECT_EQ(Wx::Detail::messageDialogStyle(view(
                  {&DialogButton::OK, &DialogControl::FRAME_CLOSE, &DialogControl::FRAME_ICON})),
              wxCAPTION | wxCLOSE_BOX | wxSYSTEM_MENU);
    EXPECT_EQ(Wx::Detail::messageDialogStyle(
                  view({&DialogButton::YES, &DialogButton::NO, &DialogControl::FRAME_ICON})),
              wxCAPTION | wxSYSTEM_MENU);
}

TEST(MessageDialogControls, KeyMapIsSortedAndFirstControlWinsASharedKey) {
    const MessageDialogButton alsoReturn(String(L"Apply"), 13);
    const auto map = Wx::Detail::buildKeyMap(
        view({&DialogButton::NO, &DialogButton::OK, &DialogControl::FRAME_CLOSE, &alsoReturn,
              &DialogButton::YES}));
    ASSERT_EQ(map.size(), 6u);
    EXPECT_TRUE(std::is_sorted(map.begin(), map.end(),
                               [](const auto& a, const auto& b) { return a.first < b.first; }));
    using Wx::Detail::lookUpKey;
    EXPECT_EQ(lookUpKey(map, 13), DialogButton::OK.id);
    EXPECT_EQ(lookUpKey(map, 370), DialogButton::OK.id);
    EXPECT_EQ(lookUpKey(map, 27), DialogControl::FRAME_CLOSE.id);
    EXPECT_EQ(lookUpKey(map, 89), DialogButton::YES.id);
    EXPECT_EQ(lookUpKey(map, 78), DialogButton::NO.id);
    for (int unknown : {0, 12, 14, 80, 371, -1})
        EXPECT_FALSE(lookUpKey(map, unknown)) << unknown;
    EXPECT_FALSE(lookUpKey({}, 13));
}

TEST(MessageDialogControls, NativeBoxStyleAndAnswers) {
    const long placement = wxSTAY_ON_TOP | wxCENTRE;
    const std::pair<MessageDialogIcon, long> icons[] = {
        {MessageDialogIcon::None, wxICON_NONE},
        {MessageDialogIcon::Error, wxICON_HAND},
        {MessageDialogIcon::Warning, wxICON_EXCLAMATION},
        {MessageDialogIcon::Question, wxICON_QUESTION},
        {MessageDialogIcon::Information, wxICON_INFORMATION}};
    for (const auto& [icon, style] : icons)
        EXPECT_EQ(Wx::Detail::nativeMessageStyle(icon, view({})), style | placement);

    const Controls yesNo = {&DialogButton::YES, &DialogButton::NO, &DialogControl::FRAME_ICON};
    const Controls okCancel = {&DialogButton::OK, &DialogButton::CANCEL,
                               &DialogControl::FRAME_ICON};
    const Controls okClose = {&DialogButton::OK, &DialogControl::FRAME_CLOSE,
                              &DialogControl::FRAME_ICON};
    const Controls yesOnly = {&DialogButton::YES};
    using Wx::Detail::nativeMessageStyle;
    EXPECT_EQ(nativeMessageStyle(MessageDialogIcon::None, view(yesNo)) & ~placement,
              wxICON_NONE | wxYES_NO);
    EXPECT_EQ(nativeMessageStyle(MessageDialogIcon::None, view(okCancel)) & ~placement,
              wxICON_NONE | wxOK | wxCANCEL);
    EXPECT_EQ(nativeMessageStyle(MessageDialogIcon::None, view(yesOnly)) & ~placement, wxICON_NONE);

    using Wx::Detail::nativeResultToId;
    EXPECT_EQ(nativeResultToId(wxID_OK, view(okClose)), DialogButton::OK.id);
    EXPECT_EQ(nativeResultToId(wxID_YES, view(yesNo)), DialogButton::YES.id);
    EXPECT_EQ(nativeResultToId(wxID_NO, view(yesNo)), DialogButton::NO.id);
    EXPECT_EQ(nativeResultToId(wxID_CANCEL, view(okCancel)), DialogButton::CANCEL.id);
    EXPECT_EQ(nativeResultToId(wxID_CANCEL, view(okClose)), DialogControl::FRAME_CLOSE.id);
    EXPECT_EQ(nativeResultToId(wxID_ABORT, view(okClose)), DialogControl::FRAME_CLOSE.id);
}

TEST(MessageDialogControls, SizesStayWithinTheirBudgets) {
    // The message's area leaves room for the margins, the icon and the frame.
    const wxSize limit = Wx::Detail::messageAreaLimit(Bucket{0, 0, 1600, 1200}, 44);
    EXPECT_LT(limit.x + 44, 1600);
    EXPECT_LT(limit.y, 1200 - 24 - 24); // margins and the button row
    EXPECT_GT(limit.x, 1400);
    // A tiny or empty work area still leaves a usable area.
    const wxSize tiny = Wx::Detail::messageAreaLimit(Bucket{}, 0);
    EXPECT_GT(tiny.x, 0);
    EXPECT_GT(tiny.y, 0);

    using Wx::Detail::autoSizedButtonSize;
    EXPECT_EQ(autoSizedButtonSize(wxSize(20, 14), 80, 24), wxSize(80, 24));
    EXPECT_EQ(autoSizedButtonSize(wxSize(100, 14), 80, 24), wxSize(124, 24));
    EXPECT_EQ(autoSizedButtonSize(wxSize(100, 30), 80, 24), wxSize(124, 38));
    Wx::Detail::setDpiScaleOverride(2.0);
    EXPECT_EQ(autoSizedButtonSize(wxSize(100, 14), 80, 24), wxSize(148, 30));
    Wx::Detail::setDpiScaleOverride(0);
}
