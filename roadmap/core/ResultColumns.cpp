#include "roadmap/core/ResultColumns.h"

#include <array>

namespace
{
using Result = CRoadMapResult;

constexpr std::array AddressColumns{ResultColumn{u"住所", 1, &Result::Address}};
constexpr std::array LandMarkColumns{
    ResultColumn{u"施設", 2, &Result::Name},
    ResultColumn{u"住所", 2, &Result::Address, u"－"},
    ResultColumn{u"小分類", 4, &Result::SmallCategory},
    ResultColumn{u"中分類", 4, &Result::MiddleCategory},
    ResultColumn{u"大分類", 4, &Result::LargeCategory},
};

constexpr SearchOutcome AddressOutcome{AddressColumns, u"住所キーワード検索を中止しました。",
                                       u"一致する住所がありませんでした。"};
constexpr SearchOutcome LandMarkOutcome{LandMarkColumns, u"施設検索を中止しました。",
                                        u"一致する施設がありませんでした。"};
} // namespace

QString ResultColumn::Text(const CRoadMapResult& result) const
{
    const QString& text = result.*Field;
    return text.isEmpty() ? QString::fromUtf16(WhenEmpty) : text;
}

const SearchOutcome& SearchOutcome::Of(SearchRule rule)
{
    return rule == SearchRule::AddressKey ? AddressOutcome : LandMarkOutcome;
}

bool SearchOutcome::IsFinished(int status)
{
    constexpr int finished = 0;
    constexpr int finishedToo = 2; // how it differs from 0 is the road map's own business
    return status == finished || status == finishedToo;
}
