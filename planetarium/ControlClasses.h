#pragma once

#include <QString>

/// The control classes that this host offers its modules.
namespace ControlClasses
{
/// Fills the register; the controls find their pictures and outlines in the data folder, which ends with a separator.
void Register(const QString& dataFolder);
} // namespace ControlClasses
