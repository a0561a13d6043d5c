#include "roadmap/core/CormppCheck.h"

#include "host/system/CommonFile.h"
#include "host/system/ComponentStore.h"

#include <QString>

using namespace Qt::StringLiterals;

namespace
{
// Characters that the text of a value may have, without the null character that ends it in a buffer of 2048 bytes and
// one of 520.
constexpr qsizetype LongestClassId = 1023;
constexpr qsizetype LongestPath = 259;

/// The default value of a class key, whatever its type; empty when there is none or it is too long.
QString ClassText(const CComponentStore& store, const QString& path, qsizetype longest)
{
    const CComponentStore::Key* key = store.OpenKey(CComponentStore::Root::Classes, path);
    const auto value = key ? key->QueryValue(QString()) : std::nullopt;
    return value && value->Text.size() <= longest ? value->FirstText() : QString();
}
} // namespace

int CCormppCheck::CheckCorMppInstalled()
{
    const CComponentStore store;
    const QString classId = ClassText(store, u"CORMPP.CorMppCtrl.2\\CLSID"_s, LongestClassId);
    const QString path = ClassText(store, u"CLSID\\"_s + classId + u"\\InprocServer32"_s, LongestPath);
    return CCommonFile::DoesFileExist(path) ? 1 : 0;
}
