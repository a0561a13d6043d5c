#include "roadmap/core/MappleDataCheck.h"

#include "host/system/ComponentStore.h"
#include "host/text/Number.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr qsizetype VersionWordLength = 7; // "version"; any other seven characters do as well
constexpr int OldestMajor = 10;
constexpr qsizetype BufferLength = 1024; // of names and of paths, in characters
const QString DataKey = u"SOFTWARE\\Super Mapple"_s;

std::optional<QString> InstalledPath(const CComponentStore& store, const QString& keyName)
{
    const QString path = DataKey + u'\\' + keyName + u"\\Mapple\\App"_s;
    if (path.size() >= BufferLength)
        return std::nullopt;
    const CComponentStore::Key* key = store.OpenKey(CComponentStore::Root::LocalMachine, path);
    const auto value = key ? key->QueryValue(u"path"_s) : std::nullopt;
    if (!value || value->Type != CComponentStore::ValueType::String)
        return std::nullopt;
    return value->FirstText();
}

std::vector<tagMappleCheck> InstalledVersions(const CComponentStore& store)
{
    std::vector<tagMappleCheck> versions;
    const CComponentStore::Key* key = store.OpenKey(CComponentStore::Root::LocalMachine, DataKey);
    if (!key)
        return versions;
    QString name;
    // Deliberately not set anew for each name: the length left by one is what the next may have. A name longer than
    // the one before it is not read; its predecessor is then taken once more, which changes nothing.
    qsizetype length = BufferLength;
    for (qsizetype index = 0; key->EnumKey(index, &name, &length) != CComponentStore::Enumerated::NoMore; ++index) {
        if (length == 0)
            continue;
        auto version = tagMappleCheck::FromKeyName(name);
        const auto path = version ? InstalledPath(store, name) : std::nullopt;
        if (!path)
            continue;
        version->Path = *path;
        versions.push_back(*version);
    }
    return versions;
}
} // namespace

std::optional<tagMappleCheck> tagMappleCheck::FromKeyName(QStringView name)
{
    const QStringView version = name.mid(VersionWordLength).trimmed();
    const qsizetype majorLength = version.indexOf(u'.');
    if (majorLength <= 0)
        return std::nullopt;
    tagMappleCheck result;
    result.Major = Number::LeadingInt(version.left(majorLength));
    if (result.Major < OldestMajor)
        return std::nullopt;
    // The length of the major number parts the other two as well, on purpose: 12.34.5 is 12, 34, 5, but 12.3.4 is
    // 12, 3, 0.
    const QStringView rest = version.mid(majorLength + 1);
    result.Minor = Number::LeadingInt(rest.left(majorLength));
    result.Revision = Number::LeadingInt(rest.mid(majorLength + 1));
    return result;
}

quint32 tagMappleCheck::SortKey() const
{
    constexpr quint32 step = 10000;
    return (static_cast<quint32>(Major) * step + static_cast<quint32>(Minor)) * step + static_cast<quint32>(Revision);
}

std::size_t tagMappleCheck::Newest(const std::vector<tagMappleCheck>& versions)
{
    std::size_t newest = 0;
    quint32 best = 0;
    for (std::size_t i = 0; i < versions.size(); ++i) {
        if (versions[i].SortKey() > best) {
            best = versions[i].SortKey();
            newest = i;
        }
    }
    return newest;
}

int CMappleDataCheck::CheckMappleDataInstalled()
{
    std::vector<tagMappleCheck> versions = InstalledVersions(CComponentStore());
    if (versions.empty())
        return 0;
    for (tagMappleCheck& version : versions)
        version.Exists = QFileInfo::exists(version.Path) ? 1 : 0;
    if (versions[tagMappleCheck::Newest(versions)].Exists != 0)
        return 1;
    const bool isAny =
        std::any_of(versions.begin(), versions.end(), [](const tagMappleCheck& v) { return v.Exists == 1; });
    return isAny ? 1 : 0;
}
