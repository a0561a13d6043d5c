#pragma once

#include "city/core/PlaceDocument.h"
#include "core_test.h"

/// The tree, one item a line, indented by level and described by the function.
template <typename Describe> QString TreeText(const CPlaceTree& tree, const Describe& describe)
{
    QString text;
    for (const CPlaceItem* item = tree.Root(); item; item = item->Following()) {
        for (const CPlaceItem* above = item->Parent(); above; above = above->Parent())
            text += u' ';
        text += describe(item) + u'\n';
    }
    return text;
}

/// The tree, a place with its values as the overlay holds them.
inline QString TreeText(const CPlaceDocument& document)
{
    return TreeText(document.Tree(), [&document](const CPlaceItem* item) {
        return item->IsFolder()
                   ? item->Text()
                   : item->Text() + QLatin1StringView(" = ") + document.List().GetLocationData(item->Data());
    });
}

/// The same without the values: "a(b c(d))" for each item with its children.
inline QString Outline(const CPlaceItem* first)
{
    QStringList items;
    for (const CPlaceItem* item = first; item; item = item->Next()) {
        const QString children = Outline(item->FirstChild());
        items += children.isEmpty() ? item->Text() : item->Text() + u'(' + children + u')';
    }
    return items.join(u' ');
}

/// A place list with its three files in a folder of its own, opened as often as a test likes.
class CPlacesInFolder
{
public:
    CPlacesInFolder() : m_paths(CPlacePaths::InFolder(m_folder.path() + QLatin1Char('/'))) {}

    void Put(const QByteArray& list) { WriteFile(m_paths.ListFilePath, list); }
    void PutOverlay(const QByteArray& overlay) { WriteFile(m_paths.OverlayFilePath, overlay); }

    /// A fresh document, loaded from the files.
    CPlaceDocument& Open()
    {
        m_document = std::make_unique<CPlaceDocument>();
        m_document->SetPaths(m_paths);
        m_document->LoadCityList();
        m_document->LoadLocationTreeContext();
        return *m_document;
    }

    [[nodiscard]] CPlaceDocument& Document() { return *m_document; }
    [[nodiscard]] QByteArray OverlayBytes() const { return ReadFile(m_paths.OverlayFilePath); }
    [[nodiscard]] const CPlacePaths& Paths() const { return m_paths; }
    [[nodiscard]] QStringList Files() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    [[nodiscard]] QByteArray File(const QString& name) const { return ReadFile(m_folder.filePath(name)); }

    /// The item at the end of the names, from the root's children on.
    [[nodiscard]] CPlaceItem* At(const QStringList& names) const
    {
        CPlaceItem* item = m_document->Tree().Root();
        for (const QString& name : names)
            item = item ? m_document->Tree().SearchNodeItem(item, name) : nullptr;
        return item;
    }

private:
    QTemporaryDir m_folder;
    CPlacePaths m_paths;
    std::unique_ptr<CPlaceDocument> m_document;
};

/// Two folders and three places.
inline const QByteArray SmallList =
    "#PLACE LIST\r\n"
    "@Japan\r\n"
    "@@Kanto\r\n"
    "Harbour                                 ,135.2500000E,34.5000000N,     12,+09.00, 0, 0, 3\r\n"
    "\x8D\x60\x8C\xA9\x91\xE4                                  ,139.7500000E,35.6250000N,      0,+09.50, 1, 1, 0\r\n"
    "#\r\n"
    "#\r\n"
    "@Overseas\r\n"
    "Ridge                                   ,118.0575000W,33.2500000S,   1742,-08.00, 1, 1,12\r\n"
    "#\r\n";

inline CCityList Values(double longitude, double latitude, double altitude, int kind)
{
    CCityList place;
    place.Longitude = longitude;
    place.Latitude = latitude;
    place.Altitude = altitude;
    place.TimeZone = 9.0;
    place.IsUserEdited = 1;
    place.Kind = kind;
    return place;
}
