#pragma once

/// How a drop-down list is presented to assistive programs: its own name, and beside it the chosen entry as its value.
/// The toolkit's own telling puts the value in the place of the name on some platforms.
namespace ComboAccessible
{
/// Presents every CKivComboBox this way from now on; a second call does nothing.
void Install();
} // namespace ComboAccessible
