#include "city/core/PlaceDocument.h"

#include "city/core/PlaceEdits.h"

#include <QFileInfo>

#include <memory>
#include <utility>

namespace
{
std::unique_ptr<QSaveFile> MakeSaveFile(const QString& path)
{
    return std::make_unique<QSaveFile>(path);
}
} // namespace

CPlacePaths CPlacePaths::InFolder(const QString& dataFolder)
{
    return {dataFolder + QString::fromUtf16(ListName), dataFolder + QString::fromUtf16(UserListName),
            dataFolder + QString::fromUtf16(OverlayName)};
}

CPlaceDocument::CPlaceDocument() : m_overlayFile(MakeSaveFile) {}

CPlaceDocument::~CPlaceDocument() = default;

void CPlaceDocument::SetPaths(const CPlacePaths& paths)
{
    m_list.ListFilePath = paths.ListFilePath;
    m_list.UserListFilePath = paths.UserListFilePath;
    m_overlayFilePath = paths.OverlayFilePath;
}

void CPlaceDocument::SetSaveFileFactory(const CKivFile::SaveFileFactory& factory)
{
    m_list.SetSaveFileFactory(factory);
    m_overlayFile.SetSaveFileFactory(factory);
}

void CPlaceDocument::LoadCityList()
{
    const CPlaceTree::CReset reset(m_list.Tree());
    m_list.LoadCityList();
}

void CPlaceDocument::LoadLocationTreeContext()
{
    const QByteArray bytes = COverlayFile::Read(m_overlayFilePath);
    if (bytes.isEmpty()) {
        m_overlay.SetDefault();
        if (QFileInfo(m_overlayFilePath).size() > 0) // it is there and cannot be read
            m_list.SetIncomplete();
        return;
    }
    OverlayJson::CParsed parsed = OverlayJson::Parse(bytes);
    if (parsed.IsWhole)
        m_overlayFile.KnowAsWhole(bytes);
    m_overlay.Take(std::move(parsed.Document));
    const CPlaceTree::CReset reset(m_list.Tree());
    try {
        m_overlay.Replay();
    } catch (...) {
        m_list.SetIncomplete();
        throw;
    }
}

CPlaceDocument::CSaved CPlaceDocument::SaveCityList()
{
    CSaved saved;
    saved.UserList = m_list.RefreshUserObs();
    // An overlay that was never read is not known, and what is not known must not be replaced.
    if (m_overlay.IsLoaded())
        saved.Overlay = m_overlayFile.Save(m_overlayFilePath, m_overlay.Bytes());
    return saved;
}

bool CPlaceDocument::IsDuplicateItemName(const CPlaceItem* parent, const QString& newName, const QString& oldName) const
{
    if (!parent)
        return true;
    if (parent->FirstChild() && parent->FirstChild()->Text() == newName)
        return true;
    return newName != oldName && m_list.Tree().SearchNodeItem(parent, newName) != nullptr;
}

CPlaceItem* CPlaceDocument::AddPlace(CPlaceItem* parent, CPlaceItem* after, const QString& name,
                                     const CCityList& values)
{
    return Run(std::make_unique<CAddEdit>(m_list, m_overlay, parent, after, name, values));
}

CPlaceItem* CPlaceDocument::AddFolder(CPlaceItem* parent, CPlaceItem* after, const QString& name)
{
    return Run(std::make_unique<CAddEdit>(m_list, m_overlay, parent, after, name, std::nullopt));
}

void CPlaceDocument::UpdatePlace(CPlaceItem* item, const QString& newName, const CCityList& values)
{
    Run(std::make_unique<CUpdateEdit>(m_list, m_overlay, item, newName, values));
}

void CPlaceDocument::UpdateFolder(CPlaceItem* item, const QString& newName)
{
    Run(std::make_unique<CUpdateEdit>(m_list, m_overlay, item, newName, std::nullopt));
}

void CPlaceDocument::Delete(CPlaceItem* item)
{
    Run(std::make_unique<CDeleteEdit>(m_list, m_overlay, item));
}

CPlaceItem* CPlaceDocument::Move(CPlaceItem* item, CPlaceItem* newParent, CPlaceItem* after)
{
    return Run(std::make_unique<CMoveEdit>(m_list, m_overlay, item, newParent, after));
}

bool CPlaceDocument::Reset()
{
    if (!m_overlay.IsLoaded())
        throw CInvalidArgument("the overlay was not loaded");
    auto edit = std::make_unique<CResetEdit>(m_list, m_overlay);
    edit->Do();
    if (!edit->IsWhole()) {
        edit->Undo();
        return false;
    }
    Keep(std::move(edit));
    return true;
}

CPlaceItem* CPlaceDocument::Run(std::unique_ptr<CPlaceEdit> edit)
{
    CPlaceItem* item = edit->Do();
    Keep(std::move(edit));
    return item;
}

/// Puts an edit that was done in the place of those that were undone.
void CPlaceDocument::Keep(std::unique_ptr<CPlaceEdit> edit)
{
    m_edits.resize(m_doneCount);
    m_edits.push_back(std::move(edit));
    ++m_doneCount;
}

CPlaceItem* CPlaceDocument::Undo()
{
    return CanUndo() ? m_edits[--m_doneCount]->Undo() : nullptr;
}

CPlaceItem* CPlaceDocument::Redo()
{
    if (!CanRedo())
        return nullptr;
    CPlaceItem* item = m_edits[m_doneCount]->Do();
    ++m_doneCount;
    return item;
}
