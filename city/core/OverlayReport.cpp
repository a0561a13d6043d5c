#include "city/core/OverlayReport.h"

#include "city/core/PlaceRecord.h"
#include "host/text/Number.h"

#include <cmath>

using namespace OverlayJson;
using namespace Qt::StringLiterals;

namespace
{
QString ValuesText(const QString& data)
{
    CCityList place;
    PlaceData::Parse(data, place);
    return (place.Longitude < 0 ? u"西経"_s : u"東経"_s) + Number::Format("%.4f", std::fabs(place.Longitude)) +
           (place.Latitude < 0 ? u"度 南緯"_s : u"度 北緯"_s) + Number::Format("%.4f", std::fabs(place.Latitude)) +
           Number::Format("度 標高 %.0fm タイムゾーン %+.2f 時間", place.Altitude, place.TimeZone);
}

class CReporter
{
public:
    QStringList Lines;

    void Report(const picojson::value& nodes, const QString& folder)
    {
        if (!nodes.is<picojson::array>())
            return;
        CKind kind;
        for (const picojson::value& element : nodes.get<picojson::array>()) {
            if (!element.is<picojson::object>()) {
                Lines += folder + u"読み飛ばされる要素: "_s + Text(element);
                continue;
            }
            picojson::object node;
            const picojson::value* next = nullptr; // not copied, as every level holds all below it
            for (const auto& [key, value] : element.get<picojson::object>()) {
                if (key == Key::Next)
                    next = &value;
                else
                    node.emplace(key, value);
            }
            const QString below = folder + Say(node, folder, kind) + u" / "_s;
            if (next)
                Report(*next, below);
        }
    }

private:
    /// What an element of unknown type has in common with the one before it, as the replay has it.
    struct CKind
    {
        bool IsPlace = false;
        QString Data;

        void Take(picojson::object& node)
        {
            if (Is(node, Key::Type, Type::Node))
                IsPlace = false;
            if (!Is(node, Key::Type, Type::Leaf))
                return;
            IsPlace = true;
            Data = Text(node, Key::Data);
        }
        [[nodiscard]] QString Values() const { return IsPlace ? u" ("_s + ValuesText(Data) + u')' : QString(); }
    };

    /// Returns the name that the item has afterwards.
    QString Say(picojson::object& node, const QString& folder, CKind& kind)
    {
        const QString name = Text(node, Key::OriginalName);
        if (Is(node, Key::Action, Action::Add)) {
            kind.Take(node);
            const QString anchor = Text(node, Key::VerticalOffset);
            const QString where = anchor.isEmpty() ? u"先頭に"_s : u"「%1」の次に"_s.arg(anchor);
            Lines += folder + where + (kind.IsPlace ? u"地名"_s : u"フォルダ"_s) + u"「%1」を追加"_s.arg(name) +
                     kind.Values();
        } else if (Is(node, Key::Action, Action::Update)) {
            kind.Take(node);
            const QString latest = Text(node, Key::LatestName);
            Lines += folder + u"「%1」を変更"_s.arg(name) +
                     (latest == name ? QString() : u": 新しい名称「%1」"_s.arg(latest)) + kind.Values();
            return latest;
        } else if (Is(node, Key::Action, Action::Delete)) {
            Lines += folder + u"「%1」を削除"_s.arg(name);
        } else if (!Is(node, Key::Action, Action::Path)) {
            Lines += folder + u"「%1」: 不明な操作「%2」"_s.arg(name, Text(node, Key::Action));
        }
        return name;
    }
};
} // namespace

QStringList OverlayReport::Lines(const picojson::value& overlay)
{
    CReporter reporter;
    reporter.Report(overlay, QString());
    return reporter.Lines;
}
