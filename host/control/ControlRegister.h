#pragma once

#include "host/control/Control.h"

#include <QHash>
#include <QString>

#include <functional>
#include <memory>

/// The register of control classes: the host fills it, the module creates from it. A host with other controls
/// registers its own classes under the same names.
class CControlRegister
{
public:
    using Factory = std::function<std::unique_ptr<IControl>(QWidget* parent)>;

    /// The one register of the process.
    [[nodiscard]] static CControlRegister& Instance();

    /// Adds a class or replaces the one of that name.
    void Register(const QString& className, const Factory& factory);

    /// Removes a class; nothing happens when there is none.
    void Unregister(const QString& className);

    /// Creates a control as a child of the parent; null when the class is unknown or its factory refuses.
    [[nodiscard]] std::unique_ptr<IControl> Create(const QString& className, QWidget* parent) const;

private:
    QHash<QString, Factory> m_factories;
};

/// Names under which the controls of this system are registered.
namespace ControlClass
{
inline constexpr char16_t SkyEngine[] = u"Kiv.SkyEngine";    ///< the default sky engine
inline constexpr char16_t SkyEngine3[] = u"Kiv.SkyEngine.3"; ///< the engine of variant 3
inline constexpr char16_t SkyEngine4[] = u"Kiv.SkyEngine.4"; ///< the engine of variant 4
inline constexpr char16_t GlobeMap[] = u"Kiv.GlobeMap";
inline constexpr char16_t RoadMap[] = u"Kiv.RoadMap";
} // namespace ControlClass
