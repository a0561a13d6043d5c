#include "planetarium/CallText.h"

#include "host/control/ControlNumbers.h"
#include "host/text/Number.h"

#include <array>
#include <span>

using namespace Qt::StringLiterals;

namespace
{
struct MethodName
{
    int Number;
    const char16_t* Name;
};

namespace Map = ControlNumber::GlobeMap;
constexpr std::array MapMethods{
    MethodName{Map::SetCenter, u"SetCenter"},
    MethodName{Map::GetCenter, u"GetCenter"},
    MethodName{Map::SetObsPosition, u"SetObsPosition"},
    MethodName{Map::Redraw, u"Redraw"},
    MethodName{Map::SetZoom, u"SetZoom"},
    MethodName{Map::Switch12, u"Switch12"},
    MethodName{Map::Switch18, u"Switch18"},
    MethodName{Map::Switch29, u"Switch29"},
    MethodName{Map::SetLandmarkFileExists, u"SetLandmarkFileExists"},
    MethodName{Map::SetLandmarkFile, u"SetLandmarkFile"},
    MethodName{Map::FeatureCount, u"FeatureCount"},
    MethodName{Map::SetFeatureFlags, u"SetFeatureFlags"},
    MethodName{Map::FeatureName, u"FeatureName"},
    MethodName{Map::ReloadUserPlaces, u"ReloadUserPlaces"},
    MethodName{Map::SetEclipsePath, u"SetEclipsePath"},
    MethodName{Map::SetBesselElementApply, u"SetBesselElementApply"},
    MethodName{Map::SetEclipsePathColor, u"SetEclipsePathColor"},
};

namespace Road = ControlNumber::RoadMap;
constexpr std::array RoadMethods{
    MethodName{Road::SetPosition, u"SetPosition"},         MethodName{Road::Search, u"Search"},
    MethodName{Road::GetSearchResult, u"GetSearchResult"}, MethodName{Road::SetScale, u"SetScale"},
    MethodName{Road::CenterMark, u"CenterMark"},           MethodName{Road::OpenFile, u"OpenFile"},
};

QString ArgumentText(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Double:
        return Number::Format("%.6f", value.toDouble());
    case QMetaType::Bool:
        return value.toBool() ? u"TRUE"_s : u"FALSE"_s;
    case QMetaType::QString:
        return u'"' + value.toString() + u'"';
    case QMetaType::ULongLong:
        return u"(flags)"_s; // an address; it differs from run to run
    default:
        return value.canConvert<QString>() ? value.toString() : u"(pointer)"_s;
    }
}

/// The call under the name that the table has for its number.
QString Text(std::span<const MethodName> methods, int method, const QVariantList& arguments)
{
    QString name = u"#"_s + Number::Format("%d", method);
    for (const MethodName& known : methods) {
        if (known.Number == method)
            name = QString::fromUtf16(known.Name);
    }
    QStringList texts;
    for (const QVariant& argument : arguments)
        texts += ArgumentText(argument);
    return name + u'(' + texts.join(u", "_s) + u')';
}
} // namespace

QString CallText::GlobeMap(int method, const QVariantList& arguments)
{
    return Text(MapMethods, method, arguments);
}

QString CallText::RoadMap(int method, const QVariantList& arguments)
{
    return Text(RoadMethods, method, arguments);
}

QString CallText::Answer(const QVariant& result)
{
    return result.isValid() ? ArgumentText(result) : QString();
}
