#pragma once

class QApplication;

/// The look of the planetarium: dark, calm, readable at night; and a font that has Japanese.
namespace Theme
{
void Install(QApplication& application);
} // namespace Theme
