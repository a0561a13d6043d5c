#include "host/dialog/Help.h"

#include <utility>

namespace
{
std::function<void(QWidget*, int)>& Provider()
{
    static std::function<void(QWidget*, int)> provider;
    return provider;
}
} // namespace

void Help::Show(QWidget* parent, int templateNumber)
{
    if (Provider())
        Provider()(parent, templateNumber);
}

void Help::SetProvider(std::function<void(QWidget*, int)> provider)
{
    Provider() = std::move(provider);
}
