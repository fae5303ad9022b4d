#pragma once

#include <varnellibwx/export.h>

#include <wx/radiobut.h>

namespace Varnel::Wx {

/// The library's radio button: the native one drawn in the library's look, like the check box (a
/// ring in the bordered look's frame colours, blue when hovered, around the dark face; a dot in
/// the skin's toggledBackground when chosen; the label in the text colour at the standard text
/// size; the disabled text colour while disabled), sized by the library's scale. The first
/// button of a group is made with `firstOfGroup`; arrow keys move among a group's enabled
/// buttons. Owned by its parent.
VARNEL_LIBWX_EXPORT wxRadioButton* makeRadioButton(wxWindow* parent, const wxString& label,
                                                   bool firstOfGroup);

} // namespace Varnel::Wx
