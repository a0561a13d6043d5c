#pragma once

/// What all site dialogs of the module share, for as long as it is loaded.
struct CObsModule
{
    /// Guards the automatic-altitude radio, and stays set once terrain data turned out to be missing: no dialog asks
    /// again.
    bool AltitudeModeBusy = false;

    [[nodiscard]] static CObsModule& Instance();
};
