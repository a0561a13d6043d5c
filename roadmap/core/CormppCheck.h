#pragma once

#include "module/kivobs_export.h"

/// Whether the road-map control is there, for a host. Only looks; shows nothing.
class KIVOBS_EXPORT CCormppCheck
{
public:
    /// 1 when the road-map control is registered and the file with its code exists, else 0.
    [[nodiscard]] static int CheckCorMppInstalled();
};
