#include "obs/core/ObsModule.h"

CObsModule& CObsModule::Instance()
{
    static CObsModule module;
    return module;
}
