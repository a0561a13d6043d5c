#pragma once

#include <QByteArrayView>
#include <QString>

#include <picojson.h>
#include <string>

/// The overlay's JSON document: its keys, and reading it from bytes that may hold anything.
namespace OverlayJson
{
/// How deep items may lie in the tree for the overlay to reach them; the JSON library works by recursion.
inline constexpr int MaximumItemDepth = 1000;

namespace Key
{
inline const std::string OriginalName = "original_name";
inline const std::string LatestName = "latest_name";
inline const std::string Action = "action";
inline const std::string Type = "type";
inline const std::string VerticalOffset = "vertical_offset";
inline const std::string Data = "data";
inline const std::string Next = "next";
} // namespace Key

namespace Action
{
inline const std::string Path = "path";
inline const std::string Add = "add";
inline const std::string Update = "update";
inline const std::string Delete = "delete";
} // namespace Action

namespace Type
{
inline const std::string Node = "node";
inline const std::string Leaf = "leaf";
} // namespace Type

struct CParsed
{
    picojson::value Document;
    bool IsWhole = false; ///< an array, and nothing but white space after it
};

/// Parses as far as the bytes are JSON and nest no deeper than the tree may. Of a broken document the node objects that
/// lead to the break are dropped, unless they are known to be mere paths of known name; what is complete beside and
/// below those is kept. Never throws.
[[nodiscard]] CParsed Parse(QByteArrayView bytes);

/// The text of a key's value, decoded; a missing key is added with the value null, whose text is "null".
[[nodiscard]] QString Text(picojson::object& node, const std::string& key);

/// The text of a value, decoded.
[[nodiscard]] QString Text(const picojson::value& value);

/// Whether the key holds an array.
[[nodiscard]] bool HoldsArray(const picojson::object& node, const std::string& key);

/// Whether the key holds exactly this string.
[[nodiscard]] bool Is(const picojson::object& node, const std::string& key, const std::string& text);

/// The text as a JSON string in code page 932.
[[nodiscard]] picojson::value String(const QString& text);
} // namespace OverlayJson
