#pragma once

#include <QString>

#include <functional>

class QWidget;

/// A map that can say where its middle is.
class ISpokenMap
{
public:
    ISpokenMap() = default;
    ISpokenMap(const ISpokenMap&) = delete;
    ISpokenMap& operator=(const ISpokenMap&) = delete;
    virtual ~ISpokenMap() = default;

    /// The middle in words, for example "東経 139°41′  北緯 35°41′".
    [[nodiscard]] virtual QString SpokenCenter() const = 0;
};

/// How maps are presented to assistive programs: as a canvas with the widget's name, its middle as the value, and a
/// description of the middle and the keys. A map is a QWidget that is an ISpokenMap too.
namespace MapAccessible
{
/// Presents every such widget this way from now on; a second call does nothing.
void Install();

/// Runs a handler of a key, and announces the middle when it is another afterwards. The description leaves out the keys
/// then, so that they are not read out at each step. Returns what the handler does.
bool TellAfterKey(QWidget& map, const std::function<bool()>& handler);

/// The map has got the focus: its description names the keys again.
void Introduce(QWidget& map);
} // namespace MapAccessible
