#pragma once

#include <varnellib/base/flags.h>
#include <varnellib/base/types.h>
#include <varnellib/native/windowhandle.h>
#include <varnellibwx/export.h>

#include <wx/bitmap.h>
#include <wx/gdicmn.h>

#include <vector>

class wxTopLevelWindow;
class wxWindow;

namespace Varnel::Wx {

/// Which rectangle of a monitor: the work area (without task bars), or, for any other value, the
/// whole monitor.
enum class MonitorRegionType : int { WorkArea = 0, WholeMonitor = 1 };

enum class FindWindowFlag : uint32 { IncludeHidden = 1, IncludeDisabled = 2 };

enum class MoveFocusDirection : int { Forward = 0, Backward = 1 };

VARNEL_LIBWX_EXPORT WindowHandle getWindowNativeHandle(wxWindow* window);

/// The first top-level window, in wxWidgets' list order, whose native handle is `handle`.
VARNEL_LIBWX_EXPORT wxTopLevelWindow* findTopLevelWxWindowForNativeHandle(WindowHandle handle);

/// The window below `root` (root included) whose native handle is `handle`; the last child is
/// examined first.
VARNEL_LIBWX_EXPORT wxWindow* findWindowByNativeHandle(wxWindow* root, WindowHandle handle);

/// The innermost window below `root` whose screen rectangle holds `point`. Hidden and disabled
/// windows are skipped with everything below them unless the flags include them.
VARNEL_LIBWX_EXPORT wxWindow* findWindowByPosition(wxWindow* root, Pixel point,
                                                   Flags<FindWindowFlag> flags = {});

/// A monitor's work area or whole area, for the monitor nearest to a point or to a window's
/// centre. Empty when there is no display.
VARNEL_LIBWX_EXPORT Bucket getMonitorRegionByPoint(Pixel point, MonitorRegionType type);
VARNEL_LIBWX_EXPORT Bucket getMonitorRegionByWindow(wxWindow* window, MonitorRegionType type);

/// Moves the window's top-left corner to `position`, pulled inside the work area of the monitor
/// nearest to it; a window larger than the work area is aligned to its left or top edge.
VARNEL_LIBWX_EXPORT void smartPositionWindow(wxWindow* window, Pixel position);

/// Gives the focus to the next (or previous) sibling, wrapping around, that is Focusable and can
/// take the focus; nothing happens when there is none.
VARNEL_LIBWX_EXPORT void moveFocus(wxWindow* window, MoveFocusDirection direction);

VARNEL_LIBWX_EXPORT void setIcon(wxTopLevelWindow* window, const wxBitmap& bitmap);
/// Gives the window the product's icon.
VARNEL_LIBWX_EXPORT void setVellumIcon(wxTopLevelWindow* window);

namespace Detail {

/// The index of the monitor nearest to `point` (squared distance to each monitor's rectangle,
/// 0 inside; ties to the lower index), or -1 for no monitor.
VARNEL_LIBWX_EXPORT int chooseMonitor(const std::vector<wxRect>& monitors, Pixel point);

/// Where smartPositionWindow puts a window of `size` asked to go to `position` in `workArea`.
VARNEL_LIBWX_EXPORT wxPoint smartPosition(const wxRect& workArea, wxSize size, Pixel position);

} // namespace Detail
} // namespace Varnel::Wx
