#include "city/core/OverlayJson.h"

#include "city/core/PlaceList.h"
#include "host/text/CodePage932.h"

#include <cmath>

namespace
{
/// An array and an object for each level of the tree, and one array below the last.
constexpr int MaximumNesting = 2 * OverlayJson::MaximumItemDepth + 1;

/// Whether a node object that was broken off may stay: only one that does nothing but lead on.
bool IsPath(const picojson::value& element)
{
    if (!element.is<picojson::object>())
        return false;
    const auto& node = element.get<picojson::object>();
    return OverlayJson::Is(node, OverlayJson::Key::Action, OverlayJson::Action::Path) &&
           node.contains(OverlayJson::Key::OriginalName);
}

/// Receives what the JSON library's parser finds, and takes back what it could not finish.
class CNodeContext
{
public:
    CNodeContext(picojson::value* out, int nesting) : m_out(out), m_nesting(nesting) {}

    bool set_null() { return Set(picojson::value()); }
    bool set_bool(bool value) { return Set(picojson::value(value)); }
    bool set_number(double number) { return !std::isfinite(number) || Set(picojson::value(number)); }

    template <typename Iterator> bool parse_string(picojson::input<Iterator>& in)
    {
        std::string text;
        return picojson::_parse_string(text, in) && Set(picojson::value(std::move(text)));
    }

    bool parse_array_start() { return m_nesting > 0 && Set(picojson::value(picojson::array_type, false)); }
    bool parse_object_start() { return m_nesting > 0 && Set(picojson::value(picojson::object_type, false)); }
    bool parse_array_stop(size_t) { return true; }
    bool parse_object_stop() { return true; }

    /// The keys stand in byte order, so that a file cut below a node object lacks that object's name. Of a path at the
    /// top the name is known even so.
    void NameRoot(picojson::value& element) const
    {
        if (m_nesting != MaximumNesting || !element.is<picojson::object>())
            return;
        auto& node = element.get<picojson::object>();
        if (OverlayJson::HoldsArray(node, OverlayJson::Key::Next))
            node.try_emplace(OverlayJson::Key::OriginalName, CodePage932::Encode(CPlaceList::RootName).toStdString());
    }

    template <typename Iterator> bool parse_array_item(picojson::input<Iterator>& in, size_t)
    {
        auto& items = m_out->get<picojson::array>();
        items.emplace_back();
        CNodeContext context(&items.back(), m_nesting - 1);
        if (picojson::_parse(context, in))
            return true;
        NameRoot(items.back());
        if (!IsPath(items.back()))
            items.pop_back();
        return false;
    }

    template <typename Iterator> bool parse_object_item(picojson::input<Iterator>& in, const std::string& key)
    {
        auto& object = m_out->get<picojson::object>();
        CNodeContext context(&object[key], m_nesting - 1);
        if (picojson::_parse(context, in))
            return true;
        if (!object[key].is<picojson::array>())
            object.erase(key);
        return false;
    }

private:
    bool Set(picojson::value&& value)
    {
        *m_out = std::move(value);
        return true;
    }

    picojson::value* m_out;
    int m_nesting; ///< levels that may still follow
};

bool IsBlank(char byte)
{
    return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
}
} // namespace

OverlayJson::CParsed OverlayJson::Parse(QByteArrayView bytes)
{
    CParsed parsed;
    CNodeContext context(&parsed.Document, MaximumNesting);
    picojson::input<const char*> in(bytes.begin(), bytes.end());
    const bool isParsed = picojson::_parse(context, in);
    const char* rest = in.cur();
    while (rest != bytes.end() && IsBlank(*rest))
        ++rest;
    parsed.IsWhole = isParsed && rest == bytes.end() && parsed.Document.is<picojson::array>();
    return parsed;
}

QString OverlayJson::Text(const picojson::value& value)
{
    return CodePage932::Decode(value.is<std::string>() ? value.get<std::string>() : value.to_str());
}

QString OverlayJson::Text(picojson::object& node, const std::string& key)
{
    return Text(node[key]);
}

bool OverlayJson::HoldsArray(const picojson::object& node, const std::string& key)
{
    const auto found = node.find(key);
    return found != node.end() && found->second.is<picojson::array>();
}

bool OverlayJson::Is(const picojson::object& node, const std::string& key, const std::string& text)
{
    const auto found = node.find(key);
    return found != node.end() && found->second.is<std::string>() && found->second.get<std::string>() == text;
}

picojson::value OverlayJson::String(const QString& text)
{
    return picojson::value(CodePage932::Encode(text).toStdString());
}
