#pragma once

/// How a drop-down list is told to assistive programs: its own name, and beside it the chosen entry as its value. The
/// toolkit's own telling puts the value in the place of the name on some platforms.
namespace ComboAccessible
{
/// Tells every CKivComboBox this way from now on; more than one call does nothing more.
void Install();
} // namespace ComboAccessible
