#include "city/core/PlaceDocument.h"
#include "fuzz/FuzzFolder.h"

#include <cstdlib>

/// Whatever the bytes are, they replay; edits find their way in them; and what is saved replays to the same tree.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static CFuzzFolder folder;
    const CPlacePaths paths = CPlacePaths::InFolder(folder.Path());
    static const QString list = folder.Write(QString::fromUtf16(CPlacePaths::ListName),
                                             "@a\n@@b\np,1E,2N,3,+9,0,0,0\nq,1E,2N,3,+9,0,0,0\n#\n#\n@c\n#\n");
    folder.Write(QString::fromUtf16(CPlacePaths::OverlayName), {reinterpret_cast<const char*>(bytes), qsizetype(size)});

    CPlaceDocument document;
    document.SetPaths(paths);
    document.LoadCityList();
    document.LoadLocationTreeContext();
    const QByteArray opened = document.Overlay().Bytes();
    CPlaceItem* root = document.Tree().Root();
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
    const OverlayJson::CParsed again = OverlayJson::Parse(opened);
    if (!again.IsWhole || QByteArray::fromStdString(again.Document.serialize()) != opened)
        std::abort(); // what is written must be read again
    return 0;
}
