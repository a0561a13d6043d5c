#pragma once

#include "PlaceFixture.h"

/// Overlay documents and edits in short, for tables of tests.
namespace OverlayScript
{
/// The document whose root entry holds the elements, as the file holds it. An element is
///
///     action name [>latest name] [<name in front] [=data] [(elements)]
///
/// with commas between elements and no blanks in names. With data it is a leaf, else a node; H and S stand for the data
/// of Harbour and of a spot that was added. A deletion has no elements. What begins with a brace, a bracket, a quote or
/// a digit is JSON and stands for itself.
[[nodiscard]] QByteArray Document(const QString& elements);

/// Does edits, parted by semicolons. A path leads from the root's children on, "." is the root.
///
///     rename PATH NAME      a place keeps its values, and counts as edited by the user
///     value PATH NAME N     a place gets a name and the longitude N
///     add PATH NAME         a place behind the place of that path, or first in the folder
///     folder PATH NAME      the same for a folder
///     delete PATH
///     move PATH TO          behind the place TO, or first in the folder
///     undo
void Edit(CPlacesInFolder& places, const QString& edits);
} // namespace OverlayScript
