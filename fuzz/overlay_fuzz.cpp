#include "city/core/PlaceDocument.h"
#include "fuzz/FuzzFolder.h"

#include <cstdlib>

namespace
{
void Open(CPlaceDocument& document, const CPlacePaths& paths)
{
    document.SetPaths(paths);
    document.LoadCityList();
    document.LoadLocationTreeContext();
}

void EditAndUndo(CPlaceDocument& document)
{
    CPlaceItem* root = document.Tree().Root();
    const QByteArray opened = document.Overlay().Bytes();
    if (CPlaceItem* item = root->FirstChild()) {
        document.AddFolder(item, nullptr, QStringLiteral("new"));
        document.UpdateFolder(item->FirstChild(), QStringLiteral("b"));
        CPlaceItem* after = root->LastChild() == item ? nullptr : root->LastChild();
        document.Delete(document.Move(item, root, after)->LastChild());
    }
    while (document.CanUndo())
        document.Undo();
    if (document.Overlay().Bytes() != opened)
        std::abort(); // undoing must leave no trace
}

/// A save keeps what the file held, as a backup when it was a document and set aside when it was none; and what it
/// writes holds the edit.
void EditAndSave(CPlaceDocument& document, const CPlacePaths& paths, const QByteArray& before)
{
    document.AddFolder(document.Tree().Root(), nullptr, QStringLiteral("saved"));
    if (!document.SaveCityList().IsAll())
        std::abort();
    const bool isWhole = OverlayJson::Parse(before).IsWhole;
    const QString kept = paths.OverlayFilePath + (isWhole ? QStringLiteral(".1") : QStringLiteral(".damaged-1"));
    if (!before.isEmpty() && CFuzzFolder::Read(kept) != before)
        std::abort();
    QFile::remove(kept);
    CPlaceDocument again;
    Open(again, paths);
    if (again.Tree().Root()->FirstChild()->Text() != QStringLiteral("saved"))
        std::abort();
}
} // namespace

/// Whatever the bytes are, they replay; edits find their way in them; and what is saved replays to the same tree.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static CFuzzFolder folder;
    const CPlacePaths paths = CPlacePaths::InFolder(folder.Path());
    static const QString list = folder.Write(QString::fromUtf16(CPlacePaths::ListName),
                                             "@a\n@@b\np,1E,2N,3,+9,0,0,0\nq,1E,2N,3,+9,0,0,0\n#\n#\n@c\n#\n");
    const QByteArray before(reinterpret_cast<const char*>(bytes), qsizetype(size));
    folder.Write(QString::fromUtf16(CPlacePaths::OverlayName), before);

    CPlaceDocument document;
    Open(document, paths);
    EditAndUndo(document);
    const QByteArray opened = document.Overlay().Bytes();
    const OverlayJson::CParsed again = OverlayJson::Parse(opened);
    if (!again.IsWhole || QByteArray::fromStdString(again.Document.serialize()) != opened)
        std::abort(); // what is written must be read again
    EditAndSave(document, paths, before);
    return 0;
}
