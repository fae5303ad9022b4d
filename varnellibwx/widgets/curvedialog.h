#pragma once

#include <varnellib/base/optional.h>
#include <varnellib/base/pointers.h>
#include <varnellib/base/string.h>
#include <varnellib/utility/colorcurve.h>
#include <varnellibwx/export.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/widgets/curvepanel.h>

#include <wx/bitmap.h>
#include <wx/frame.h>

#include <deque>

namespace Varnel::Wx {

class Button;
class ComboBox;

namespace Detail {

/// The curve dialog's history of edits: each step holds the four curves as they were before (or,
/// undone, after) one edit. Bounded by a count and by memory (a curve file may hold 65,535 points
/// a curve, about 2 MB a step): the oldest steps go first, and the newest is always kept.
class CurveHistory {
public:
    CurveHistory(int maxSteps, std::size_t maxBytes) : m_maxSteps(maxSteps), m_maxBytes(maxBytes) {}

    /// One edit from `before` to `now`; forgets what was undone. An edit that changed nothing is
    /// no step.
    void edited(const ColorCurve& before, const ColorCurve& now);
    /// The curves one step back (or forward) from `now`, which the other side keeps; none when
    /// there is no step.
    Optional<ColorCurve> undo(const ColorCurve& now);
    Optional<ColorCurve> redo(const ColorCurve& now);
    bool canUndo() const { return !m_undo.empty(); }
    bool canRedo() const { return !m_redo.empty(); }
    int undoSteps() const { return static_cast<int>(m_undo.size()); }
    /// The memory the steps hold, by their points.
    std::size_t bytes() const { return m_bytes; }
    static std::size_t bytesOf(const ColorCurve& curves);

private:
    void push(std::deque<ColorCurve>& steps, const ColorCurve& curves);
    Optional<ColorCurve> pop(std::deque<ColorCurve>& from, std::deque<ColorCurve>& to,
                             const ColorCurve& now);
    void trim();

    int m_maxSteps;
    std::size_t m_maxBytes;
    std::size_t m_bytes = 0;
    std::deque<ColorCurve> m_undo;
    std::deque<ColorCurve> m_redo;
};

} // namespace Detail

/// What a host gives a curve dialog: the panel's five operations (slots 1 to 5, the same object
/// serves the panel) and the dialog's own, in slot order. All are called on the interface thread.
class VARNEL_LIBWX_EXPORT ICurveDialogCallbacks : public ICurvePanelCallbacks {
public:
    /// Slot 6, asked once while the dialog is built: a picture for the "Pick" toggle, shown left
    /// of its label. An empty bitmap (the default) leaves the label alone.
    virtual wxBitmap getPickBitmap() { return wxNullBitmap; }
    /// Slot 7, never called by the dialog: whether the host routes its image's pointer to the
    /// controller while "Pick" is down, for code that opens the dialog and wants to know before.
    /// True unless the host says otherwise.
    virtual bool canPick() { return true; }
    /// Slot 8: where to place the new dialog.
    virtual wxPoint getInitialPosition(wxWindow* dialog) = 0;
    /// Slot 9: the dialog's position when it is destroyed, to open the next one there.
    virtual void storePosition(wxPoint position) = 0;
    /// Slot 10: the dialog once built, and each dropdown list of its combo boxes as it opens.
    virtual void onWindowOpened(wxWindow* window) = 0;
    /// Slot 11: each dropdown list as it closes, and the dialog from its destructor.
    virtual void onWindowClosed(wxWindow* window) = 0;
};

/// ICurveDialogCallbacks with neutral answers, for a host that writes only what it uses: the
/// panel's (NeutralCurvePanelAnswers), the toolkit's default place for the dialog, no position
/// stored, windows opened and closed unheard. A host usually overrides onCurveChanged.
class VARNEL_LIBWX_EXPORT CurveDialogCallbacksBase
    : public NeutralCurvePanelAnswers<ICurveDialogCallbacks> {
public:
    wxPoint getInitialPosition(wxWindow*) override { return wxDefaultPosition; }
    void storePosition(wxPoint) override {}
    void onWindowOpened(wxWindow*) override {}
    void onWindowClosed(wxWindow*) override {}
};

/// A floating, resizable tool window around a CurvePanel: the channel choice with "Reset" and
/// "Reset All", the histogram choice with "Equalize", the interpolation choice, "Load" and
/// "Save" of Photoshop curve files, and the "Pick" toggle with which the user edits the selected
/// curve by pointing into the host's image (the host routes its pointer to getController while
/// isPicking).
///
/// Every finished edit is one step of a history bounded by kUndoSteps and kUndoBytes: a drag
/// from press to release, a pick, a removal, a keyboard edit (a run of one arrow key on one
/// point is one step), "Reset", "Reset All", "Equalize", a load, an interpolation change and a
/// host's setCurves. Ctrl+Z undoes, Ctrl+Shift+Z and Ctrl+Y redo; both give the curves back
/// through the panel, which reports all four channels so that the host follows. Any change of
/// the curves ends a drag or pick in progress first (what it moved so far is its own step), so
/// Ctrl+Z in the middle of a drag takes the drag back.
///
/// The controls show the dialog's state after every change, from any side: the channel choice
/// the panel's channel, the histogram choice the panel's mode, and the interpolation choice the
/// mode of the selected curve as the last change left it. Choosing another channel alone leaves
/// the interpolation choice as it is.
///
/// Closing the frame hides and destroys it; the destructor tells the host through
/// onWindowClosed(this), then storePosition, then lets the callbacks go. The host may destroy
/// the dialog at any time, from its callbacks too (the destruction waits for the next idle
/// time, as wxWidgets' Destroy does). Owned by itself.
class VARNEL_LIBWX_EXPORT CurveDialog : public wxFrame {
public:
    static constexpr int kUndoSteps = 100;
    static constexpr std::size_t kUndoBytes = std::size_t(64) << 20;

    CurveDialog(wxWindow* parent, const GuiSkin& skin, const String& title,
                const ColorCurve& curves, SharedPtr<ICurveDialogCallbacks> callbacks);
    ~CurveDialog() override;

    /// Gives the panel all four curves, reported: one step of the history.
    void setCurves(ColorCurve curves);
    void updateHistogram();
    AutoPtr<ICurvePanelController> getController() const;
    bool isPicking() const;
    /// Enables or disables the histogram choice and "Equalize", then repaints.
    void enableHistogramControls(bool enable);

    /// One step back or forward in the history of edits; false when there is none.
    bool undo();
    bool redo();
    bool canUndo() const { return m_history.canUndo(); }
    bool canRedo() const { return m_history.canRedo(); }

    CurvePanel* panel() const { return m_panel; }
    ComboBox* channelChoice() const { return m_channel; }
    ComboBox* histogramChoice() const { return m_histogram; }
    ComboBox* interpolationChoice() const { return m_interpolation; }
    Button* pickButton() const { return m_pick; }
    /// The buttons by label ("Reset", "Equalize", "Load", "Save"), for hosts and tests.
    Button* button(const wxString& label) const;
    /// The dropdown button's "Reset All", as its menu item runs it.
    void resetAll();
    void equalize();
    void load();
    void save();

private:
    void build(const GuiSkin& skin, const ColorCurve& curves);
    ComboBox* addChoice(wxWindow* parent, const std::initializer_list<const wchar_t*>& labels,
                        int selected, Function<void(int)> onSelect);
    /// Remembers the curves before an edit as one step; a new edit forgets what was undone.
    void remember(const ColorCurve& before);
    /// The one way the curves change from the dialog's side (not the panel's own edits; the
    /// gesture in progress has ended): the curves go to the panel, reported for `only` or for all
    /// four, the step is remembered and the controls follow.
    void change(const ColorCurve& curves, Optional<CurveChannel> only = {});
    /// Gives the panel curves from the history (all four reported) and brings the choices in
    /// line; false when there were none.
    bool restore(Optional<ColorCurve> curves);
    /// Brings the choices in line with the panel and the interpolation shown, firing nothing.
    void refreshControls();
    void onResize(wxSizeEvent& event);
    void onClose(wxCloseEvent& event);
    void onKey(wxKeyEvent& event);

    CurvePanel* m_panel = nullptr;
    ComboBox* m_channel = nullptr;
    ComboBox* m_histogram = nullptr;
    ComboBox* m_interpolation = nullptr;
    Button* m_equalize = nullptr;
    Button* m_pick = nullptr;
    SharedPtr<ICurveDialogCallbacks> m_callbacks;
    wxSize m_sizeDifference;
    Detail::CurveHistory m_history{kUndoSteps, kUndoBytes};
    /// The mode the interpolation choice shows: the selected curve's after each change.
    int m_interpolationShown = 0;
};

} // namespace Varnel::Wx
