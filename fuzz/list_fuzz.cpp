#include "city/core/PlaceList.h"
#include "fuzz/FuzzFolder.h"

namespace
{
void Load(CPlaceList& list)
{
    try {
        list.LoadCityList();
    } catch (const CInvalidArgument&) {
        return; // a full table; what was read stays
    }
}
} // namespace

/// Whatever the bytes are, they load; and what is written from them is stable: read and written again it stays.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static CFuzzFolder folder;
    const QString userList = folder.Path() + QStringLiteral("user.obs");
    CPlaceList list;
    list.ListFilePath =
        folder.Write(QStringLiteral("list.obs"), {reinterpret_cast<const char*>(bytes), qsizetype(size)});
    list.UserListFilePath = userList;
    Load(list);
    if (!list.RefreshUserObs())
        return 0;
    // What was cut or could not be decoded settles with the first reading.
    const auto readAndWrite = [&userList] {
        CPlaceList again;
        again.ListFilePath = userList;
        again.UserListFilePath = userList;
        Load(again);
        return again.RefreshUserObs() ? CFuzzFolder::Read(userList) : QByteArray();
    };
    const QByteArray once = readAndWrite();
    if (!once.isEmpty() && readAndWrite() != once)
        std::abort();
    return 0;
}
