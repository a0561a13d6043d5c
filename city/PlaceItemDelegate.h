#pragma once

#include <QIcon>
#include <QPersistentModelIndex>
#include <QStyledItemDelegate>

#include <array>

/// The pictures of the place tree, by their places in the image list.
namespace PlaceImage
{
inline constexpr int FolderClosed = 0;
inline constexpr int FolderOpen = 1;
inline constexpr int PlaceSelected = 2;
inline constexpr int Place = 3;
inline constexpr int Count = 4;

using List = std::array<QIcon, Count>;

/// Makes the list from the module's bitmaps, in which red is transparent.
[[nodiscard]] List Load();
} // namespace PlaceImage

/// Paints the items of the place tree with their pictures: another one for the selected item.
class CPlaceItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    CPlaceItemDelegate(const PlaceImage::List& images, QObject* parent);

    /// The item that is cut, waiting to be put elsewhere; it is painted dim.
    void SetCutItem(const QModelIndex& index) { m_cutItem = index; }
    [[nodiscard]] QModelIndex CutItem() const { return m_cutItem; }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    const PlaceImage::List& m_images; ///< outlives the delegate
    QPersistentModelIndex m_cutItem;
};
