#pragma once

class CCamera;
class CMainWindow;

/// Drives the city list and its dialogs for the camera, from the site dialog, which must show the Earth. The list is
/// cancelled in the end.
namespace CityPictures
{
void Take(CCamera& camera, CMainWindow& window);
} // namespace CityPictures
