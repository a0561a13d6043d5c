#include "city/PlaceItemDelegate.h"

#include "city/core/PlaceModel.h"

#include <QBitmap>
#include <QPixmap>

using namespace Qt::StringLiterals;

namespace
{
constexpr int FirstBitmap = 7102;
constexpr QSize ImageSize(16, 15);
} // namespace

PlaceImage::List PlaceImage::Load()
{
    List images;
    for (int image = 0; image < Count; ++image) {
        QPixmap pixmap(u":/kiv/bitmaps/%1.png"_s.arg(FirstBitmap + image));
        pixmap.setMask(pixmap.createMaskFromColor(QColor(255, 0, 0)));
        QIcon& icon = images[static_cast<size_t>(image)];
        icon.addPixmap(pixmap, QIcon::Normal);
        icon.addPixmap(pixmap, QIcon::Selected); // as it is, without the tint of a selection
    }
    return images;
}

CPlaceItemDelegate::CPlaceItemDelegate(const PlaceImage::List& images, QObject* parent)
    : QStyledItemDelegate(parent), m_images(images)
{
}

void CPlaceItemDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const bool isSelected = (option->state & QStyle::State_Selected) != 0;
    const CPlaceItem* item = CPlaceModel::Item(index);
    int image = isSelected ? PlaceImage::PlaceSelected : PlaceImage::Place;
    if (!item || item->IsFolder())
        image = isSelected ? PlaceImage::FolderOpen : PlaceImage::FolderClosed;
    option->icon = m_images[static_cast<size_t>(image)];
    option->decorationSize = ImageSize;
    option->features |= QStyleOptionViewItem::HasDecoration;
    if (m_cutItem == index)
        option->state &= ~QStyle::State_Enabled;
}
