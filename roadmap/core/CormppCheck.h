#pragma once

#include "module/kivobs_export.h"

/// Tells a host whether the road-map control is there. Only looks; shows nothing.
class KIVOBS_EXPORT CCormppCheck
{
public:
    /// 1 when the road-map control is registered and the file with its code exists, else 0.
    [[nodiscard]] static int CheckCorMppInstalled();
};
