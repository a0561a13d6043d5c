#pragma once

class CCamera;
class CMainWindow;

/// Drives the road map and its search window for the camera.
namespace RoadMapPictures
{
void Take(CCamera& camera, CMainWindow& window);
} // namespace RoadMapPictures
