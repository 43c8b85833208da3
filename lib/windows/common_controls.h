// The window classes of the common controls.
#pragma once

namespace kx {

// Makes the classes of the tree view, the list view and the date and time picker known to the process, in the
// version of the active context. To be called before a control or a dialog template names one of them; again
// at no cost. False: the system refused.
bool UseCommonControls();

}  // namespace kx
