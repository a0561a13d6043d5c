#include "res/StringTable.h"

#include <algorithm>
#include <array>

namespace
{
struct Entry
{
    int Id;
    const char16_t* Text;
};

constexpr std::array Entries{
    Entry{StringTable::DeletePlace, u"\"%1\"を削除します"},
    Entry{StringTable::DeleteFolder, u"\"%1\"フォルダとこのフォルダに含まれるすべての情報を消去します。"},
    Entry{StringTable::SectionCity, u"Dialog\\City"},
    Entry{StringTable::SectionObs, u"Dialog\\Obs"},
    Entry{StringTable::SectionAddCity, u"Dialog\\AddCity"},
    Entry{StringTable::SectionEditCity, u"Dialog\\EditCity"},
    Entry{StringTable::SectionEditFolder, u"Dialog\\EditFolder"},
    Entry{StringTable::ConsoleCommands, u"Commands"},
    Entry{StringTable::ConsoleCommand, u"Command"},
    Entry{StringTable::ConsoleEnable, u"Enable"},
    Entry{StringTable::SectionCommand, u"Dialog\\Command"},
    Entry{StringTable::AltitudeRange, u"%sの標高には %.0f から %.0f までの値を入力してください。"},
    Entry{StringTable::LongitudeRange, u"経度には %d から %d までの値を入力してください。"},
    Entry{StringTable::MoveAfterFolder, u"[%s] フォルダの後ろに挿入"},
    Entry{StringTable::MoveIntoFolder, u"[%s] フォルダの中に移動"},
    Entry{StringTable::NewPlaceName, u"新規"},
    Entry{StringTable::SectionMapple, u"Dialog\\Mapple"},
    Entry{StringTable::SectionMappleFind, u"Dialog\\MappleFind"},
};
} // namespace

QString StringTable::Load(int id)
{
    const auto* entry = std::find_if(Entries.begin(), Entries.end(), [id](const Entry& e) { return e.Id == id; });
    return entry == Entries.end() ? QString() : QString::fromUtf16(entry->Text);
}
