#pragma once

#include <varnellibwx/export.h>

#include <wx/radiobut.h>

namespace Varnel::Wx {

/// The library's radio button: the native one with its label at the standard text size, sized
/// for that label (GTK reports the size for the old font until it restyles the button). The
/// first button of a group is made with `firstOfGroup`; arrow keys move among a group's enabled
/// buttons. Owned by its parent.
VARNEL_LIBWX_EXPORT wxRadioButton* makeRadioButton(wxWindow* parent, const wxString& label,
                                                   bool firstOfGroup);

} // namespace Varnel::Wx
