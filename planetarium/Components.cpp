#include "planetarium/Components.h"

#include "host/system/CommonFile.h"
#include "host/system/ComponentStore.h"

#include <QCoreApplication>

#include <vector>

using namespace Qt::StringLiterals;
using Root = CComponentStore::Root;

namespace
{
const QString ClassId = u"{6E1D7C52-0B0A-4C0E-9D3B-5A8F2E94C7D1}"_s; // of this program's road map

struct Entry
{
    Root Where;
    QString Path;
    QString Name; // empty: the key's default value
    QString Text;
};

bool IsEntered(const CComponentStore& store, const Entry& entry)
{
    const CComponentStore::Key* const key = store.OpenKey(entry.Where, entry.Path);
    const auto value = key ? key->QueryValue(entry.Name) : std::nullopt;
    return value && value->Type == CComponentStore::ValueType::String && value->Text == entry.Text;
}
} // namespace

void Components::Install(const QString& dataFolder)
{
    std::vector<Entry> entries{
        {Root::Classes, u"CORMPP.CorMppCtrl.2\\CLSID"_s, {}, ClassId},
        {Root::Classes, u"CLSID\\"_s + ClassId + u"\\InprocServer32"_s, {}, QCoreApplication::applicationFilePath()},
    };
    const QString data = dataFolder + u"roadmap/"_s;
    if (CCommonFile::DoesFileExist(data + u"addresses.csv"_s))
        entries.push_back(
            {Root::LocalMachine, u"SOFTWARE\\Super Mapple\\version 12.0.0\\Mapple\\App"_s, u"path"_s, data});
    CComponentStore store;
    bool isChanged = false;
    for (const Entry& entry : entries) {
        if (IsEntered(store, entry))
            continue;
        store.SetValue(entry.Where, entry.Path, entry.Name, {CComponentStore::ValueType::String, entry.Text});
        isChanged = true;
    }
    if (isChanged) // a record that cannot be written leaves what was entered before
        static_cast<void>(store.Save());
}
