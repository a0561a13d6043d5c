#include "planetarium/ControlClasses.h"

#include "controls/globe_map/GlobeMap.h"
#include "controls/road_map/RoadMap.h"
#include "controls/sky_engine/SkyEngine.h"
#include "host/control/ControlRegister.h"

void ControlClasses::Register(const QString& dataFolder)
{
    CControlRegister& classes = CControlRegister::Instance();
    for (const char16_t* name : {ControlClass::SkyEngine, ControlClass::SkyEngine3, ControlClass::SkyEngine4}) {
        classes.Register(QString::fromUtf16(name),
                         [dataFolder](QWidget* parent) { return std::make_unique<CSkyEngine>(parent, dataFolder); });
    }
    classes.Register(QString::fromUtf16(ControlClass::GlobeMap),
                     [dataFolder](QWidget* parent) { return std::make_unique<CGlobeMap>(parent, dataFolder); });
    classes.Register(QString::fromUtf16(ControlClass::RoadMap),
                     [dataFolder](QWidget* parent) { return std::make_unique<CRoadMap>(parent, dataFolder); });
}
