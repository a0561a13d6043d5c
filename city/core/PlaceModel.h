#pragma once

#include "city/core/PlaceDocument.h"

#include <QAbstractItemModel>

#include <memory>
#include <unordered_map>
#include <vector>

/// The place tree as a model for views: one column, the item's text. Pictures are the view's business.
class CPlaceModel : public QAbstractItemModel, private CPlaceTreeListener
{
    Q_OBJECT

public:
    static constexpr int DataRole = Qt::UserRole; ///< CPlaceItem::FolderData, or the index of the place's record

    /// The document must outlive the model, which becomes the one listener of its tree.
    explicit CPlaceModel(CPlaceDocument& document, QObject* parent = nullptr);
    ~CPlaceModel() override;

    /// The item of an index, null for the invalid one; and the index of an item, invalid for null.
    [[nodiscard]] static CPlaceItem* Item(const QModelIndex& index);
    [[nodiscard]] QModelIndex Index(const CPlaceItem* item) const;

    using QObject::parent;
    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] bool hasChildren(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    using CChildren = std::vector<CPlaceItem*>;

    void BeforeInsert(CPlaceItem* parent, CPlaceItem* after) override;
    void AfterInsert(CPlaceItem* item) override;
    void BeforeRemove(CPlaceItem* item) override;
    void AfterRemove(CPlaceItem* item) override;
    void TextChanged(CPlaceItem* item) override;
    void BeforeReset() override { beginResetModel(); }
    void AfterReset() override;

    [[nodiscard]] const CPlaceItem* FirstChild(const CPlaceItem* parent) const;
    [[nodiscard]] CChildren& ChildrenOf(const CPlaceItem* parent) const;
    [[nodiscard]] int RowOf(const CPlaceItem* item) const;

    CPlaceDocument& m_document;
    /// The children of the folders that a view has asked about, in order.
    mutable std::unordered_map<const CPlaceItem*, CChildren> m_children;
};
