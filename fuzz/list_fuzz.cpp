#include "city/core/PlaceList.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

namespace
{
/// The bytes as a list file; the folder lives as long as the process.
class CListFile
{
public:
    QString Write(const std::uint8_t* bytes, std::size_t size)
    {
        QFile file(m_folder.filePath(QStringLiteral("list.obs")));
        if (!file.open(QIODevice::WriteOnly))
            std::abort();
        file.write(reinterpret_cast<const char*>(bytes), static_cast<qint64>(size));
        return file.fileName();
    }

    [[nodiscard]] QString UserList() const { return m_folder.filePath(QStringLiteral("user.obs")); }

private:
    QTemporaryDir m_folder;
};

void Load(CPlaceList& list)
{
    try {
        list.LoadCityList();
    } catch (const CInvalidArgument&) {
        return; // a full table; what was read stays
    }
}

QByteArray Read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

/// Whatever the bytes are, they load; and what is written from them is stable: read and written again it stays.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static CListFile file;
    CPlaceList list;
    list.ListFilePath = file.Write(bytes, size);
    list.UserListFilePath = file.UserList();
    Load(list);
    if (!list.RefreshUserObs())
        return 0;
    const QByteArray once = Read(file.UserList());

    CPlaceList again;
    again.ListFilePath = file.UserList();
    again.UserListFilePath = file.UserList();
    Load(again);
    if (again.RefreshUserObs() && Read(file.UserList()).size() > 2 * once.size() + 4096)
        std::abort(); // a file that grows by being saved
    return 0;
}
